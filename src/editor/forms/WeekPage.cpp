#include "WeekPage.h"

#include "OutputLegend.h"
#include "PictureScroll.h"
#include "WeekView.h"
#include "WidgetDescription.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

/// Longer ones do not fit a line of the sheet.
constexpr int longestTitle = 80;

} // namespace

WeekPage::WeekPage(QWidget* parent)
    : QWidget(parent), m_title(new QLineEdit(this)), m_view(new WeekView)
{
    describe(*m_title, u"txtTitulo"_s, u"Título de la hoja"_s,
             u"Se imprime encima de la semana. No se guarda en el archivo del programa."_s);
    m_title->setMaxLength(longestTitle);
    m_title->setPlaceholderText(u"Por ejemplo: Timbres, curso 2026-27"_s);
    auto* caption = new QLabel(u"&Título de la hoja:"_s, this);
    caption->setBuddy(m_title);
    auto* head = new QHBoxLayout;
    head->addWidget(caption);
    head->addWidget(m_title, 1);
    head->addWidget(new OutputLegend(this));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(new PictureScroll(*m_view, this), 1);
    connect(m_title, &QLineEdit::editingFinished, this, &WeekPage::sheetTitleEdited);
    connect(m_view, &WeekView::alarmChosen, this, &WeekPage::alarmChosen);
}

void WeekPage::setProgramme(const Programme& programme, ClockModel model)
{
    m_view->setProgramme(programme, model);
}

void WeekPage::setSheetTitle(const QString& title) { m_title->setText(title); }

QString WeekPage::sheetTitle() const { return m_title->text(); }

void WeekPage::focusFirst() { m_view->setFocus(Qt::OtherFocusReason); }

#include "NoticeBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_action(new QPushButton(u"Ver &qué"_s, this))
{
    setObjectName(u"fraAviso"_s);
    setFrameShape(QFrame::StyledPanel);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_action->setObjectName(u"cmdAtender"_s);
    auto* hide = new QPushButton(u"&Ocultar"_s, this);
    hide->setObjectName(u"cmdOcultar"_s);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_action);
    layout->addWidget(hide);
    connect(hide, &QPushButton::clicked, this, &QWidget::hide);
    connect(m_action, &QPushButton::clicked, this, [this] {
        QWidget::hide();
        // A copy: what it does may show another notice.
        const std::function<void()> act = m_act;
        act();
    });
    QWidget::hide();
}

void NoticeBar::showNotice(const QString& text, const QString& action,
                           const std::function<void()>& act)
{
    m_text->setText(text);
    m_action->setText(action);
    m_act = act;
    show();
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

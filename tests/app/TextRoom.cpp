#include "TextRoom.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QStyleOptionGroupBox>
#include <QStyleOptionTab>
#include <QTabBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The toolkit's own margin on each side of the text of a line edit, in pixels.
constexpr int lineEditMargin = 2;

QSize textSize(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text);
}

struct Measure {
    QSize room;
    QSize needed;
};

Measure measure(const QLineEdit& edit)
{
    QStyleOptionFrame option;
    option.initFrom(&edit);
    option.rect = edit.contentsRect();
    option.lineWidth = edit.hasFrame()
                           ? edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit)
                           : 0;
    option.state |= QStyle::State_Sunken;
    const QRect contents =
        edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
    const QRect room = contents.marginsRemoved(edit.textMargins());
    return {QSize(room.width() - 2 * lineEditMargin, room.height()),
            QSize(edit.fontMetrics().horizontalAdvance(edit.displayText()),
                  edit.fontMetrics().height())};
}

Measure measure(const QLabel& label)
{
    if (label.wordWrap())
        return {label.size(), QSize(0, label.heightForWidth(label.width()))};
    return {label.size(), label.minimumSizeHint()};
}

Measure measure(const QComboBox& list)
{
    QStyleOptionComboBox option;
    option.initFrom(&list);
    option.editable = list.isEditable();
    option.frame = list.hasFrame();
    const QRect room = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &list);
    QSize widest;
    for (int entry = 0; entry < list.count(); ++entry)
        widest = widest.expandedTo(textSize(list, list.itemText(entry)));
    return {room.size(), widest};
}

Measure measure(const QGroupBox& frame)
{
    QStyleOptionGroupBox option;
    option.initFrom(&frame);
    option.text = frame.title();
    option.subControls = QStyle::SC_GroupBoxLabel | QStyle::SC_GroupBoxFrame;
    const QRect title = frame.style()->subControlRect(QStyle::CC_GroupBox, &option,
                                                      QStyle::SC_GroupBoxLabel, &frame);
    return {frame.rect().intersected(title).size(), textSize(frame, frame.title())};
}

Measure measure(const QTabBar& bar)
{
    struct Options : QTabBar {
        using QTabBar::initStyleOption;
    };
    Measure worst{{}, {}};
    for (int tab = 0; tab < bar.count(); ++tab) {
        QStyleOptionTab option;
        (bar.*&Options::initStyleOption)(&option, tab);
        const QSize room =
            bar.style()->subElementRect(QStyle::SE_TabBarTabText, &option, &bar).size();
        const QSize needed = textSize(bar, bar.tabText(tab));
        if (tab == 0 || needed.width() - room.width() > worst.needed.width() - worst.room.width())
            worst = {room, needed};
    }
    return worst;
}

Measure measure(const QWidget& widget)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return measure(*edit);
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return measure(*label);
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return measure(*list);
    if (const auto* frame = qobject_cast<const QGroupBox*>(&widget))
        return measure(*frame);
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget))
        return measure(*bar);
    if (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QMenuBar*>(&widget))
        return {widget.size(), widget.sizeHint()};
    return {{}, {}};
}

bool hasText(const QWidget& widget)
{
    const auto* bar = qobject_cast<const QTabBar*>(&widget);
    const auto has = [&](const char* property) {
        return !widget.property(property).toString().isEmpty();
    };
    return has("text") || has("title") || has("currentText") || (bar && bar->count() > 0);
}

/// Whether the control must fit because nothing around it can be scrolled.
bool isFixedPart(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    return !widget.isWindow() && parent && !qobject_cast<const QMdiSubWindow*>(&widget) &&
           !qobject_cast<const QAbstractScrollArea*>(parent->parentWidget());
}

QString named(const QWidget& widget, const QString& complaint)
{
    return u"%1 %2: %3"_s.arg(QString::fromLatin1(widget.metaObject()->className()),
                              widget.objectName(), complaint);
}

QString shown(const QSize& size) { return u"%1x%2"_s.arg(size.width()).arg(size.height()); }

} // namespace

QStringList cutTexts(const QWidget& window)
{
    QStringList cut;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window))
            continue;
        if (widget->size().isEmpty()) {
            if (hasText(*widget))
                cut.append(named(*widget, u"has no room"_s));
            continue;
        }
        const auto [room, needed] = measure(*widget);
        if (needed.width() > room.width() || needed.height() > room.height())
            cut.append(named(*widget, u"has %1, needs %2"_s.arg(shown(room), shown(needed))));
        if (isFixedPart(*widget) && !widget->parentWidget()->rect().contains(widget->geometry()))
            cut.append(named(*widget, u"reaches out of what it stands in"_s));
    }
    return cut;
}

#pragma once

#include "TextUpDown.h"
#include "TextoRestrinxido.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QTest>

using namespace Qt::StringLiterals;

/// A time of the programme and a date of the clock between two other controls.
struct NumberFieldWindow {
    NumberFieldWindow()
    {
        auto* layout = new QHBoxLayout(&top);
        for (QWidget* control : QWidgetList{before, time, date, after})
            layout->addWidget(control);
        top.show();
        top.activateWindow();
        active = QTest::qWaitForWindowActive(&top);
        time->setFocus();
    }

    /// The one that shows such a text.
    NumberField* fieldFor(const QString& text) const
    {
        if (text.contains(u':'))
            return time;
        return date;
    }
    QPoint button(QStyle::SubControl which) const
    {
        QStyleOptionSpinBox option;
        option.initFrom(time);
        option.frame = true;
        return time->style()->subControlRect(QStyle::CC_SpinBox, &option, which, time).center();
    }
    static QLineEdit* editor(QWidget* field) { return field->findChild<QLineEdit*>(); }
    static QAccessibleInterface* reader(QWidget* field)
    {
        return QAccessible::queryAccessibleInterface(field);
    }
    static QString selected(QWidget* field) { return editor(field)->selectedText(); }

    QWidget top;
    QLineEdit* before = new QLineEdit;
    TextUpDown* time = new TextUpDown({{0, 23, 2, u"Hora"_s}, {0, 59, 2, u"Minuto"_s}}, u':');
    TextoRestrinxido* date = new TextoRestrinxido({{1, 31, 2}, {1, 12, 2}, {0, 9999, 4}}, u'/');
    QLineEdit* after = new QLineEdit;
    bool active = false;
};

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

inline void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

inline void paste(const QString& text)
{
    QApplication::clipboard()->setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
}

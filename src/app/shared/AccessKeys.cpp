#include "AccessKeys.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>

namespace {

bool isCalledBy(const QKeySequence& keys, const QString& caption)
{
    return QKeySequence::mnemonic(caption) == keys;
}

QWidget* targetOf(QWidget* widget, const QKeySequence& keys)
{
    if (const auto* button = qobject_cast<QAbstractButton*>(widget))
        return isCalledBy(keys, button->text()) ? widget : nullptr;
    if (const auto* frame = qobject_cast<QGroupBox*>(widget))
        return isCalledBy(keys, frame->title()) ? widget : nullptr;
    if (const auto* label = qobject_cast<QLabel*>(widget))
        return label->buddy() && isCalledBy(keys, label->text()) ? label->buddy() : nullptr;
    return nullptr;
}

} // namespace

QWidget* accesskeys::target(const QWidget& window, const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::AltModifier || event.key() == 0 || event.key() == Qt::Key_unknown)
        return nullptr;
    const QKeySequence keys(QKeyCombination(modifiers, static_cast<Qt::Key>(event.key())));
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        QWidget* found = targetOf(widget, keys);
        if (found && found->isVisible() && found->isEnabled())
            return found;
    }
    return nullptr;
}

void accesskeys::activate(QWidget& target)
{
    target.setFocus(Qt::ShortcutFocusReason);
    if (auto* button = qobject_cast<QAbstractButton*>(&target))
        button->animateClick();
}

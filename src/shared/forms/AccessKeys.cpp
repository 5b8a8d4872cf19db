#include "AccessKeys.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>

namespace {

bool isCalledBy(const QKeySequence& keys, const QString& caption)
{
    return QKeySequence::mnemonic(caption) == keys;
}

QWidget* firstControl(const QWidget& frame)
{
    const QList<QWidget*> inside = frame.findChildren<QWidget*>();
    const auto first = std::find_if(inside.begin(), inside.end(), [](const QWidget* widget) {
        return accesskeys::takesFocus(*widget);
    });
    return first == inside.end() ? nullptr : *first;
}

/// The control that gets the focus by the access key of `carrier`; nullptr for another key.
QWidget* receiver(QWidget& carrier, const QKeySequence& keys)
{
    if (const auto* button = qobject_cast<QAbstractButton*>(&carrier))
        return isCalledBy(keys, button->text()) ? &carrier : nullptr;
    if (const auto* frame = qobject_cast<QGroupBox*>(&carrier))
        return isCalledBy(keys, frame->title()) ? firstControl(*frame) : nullptr;
    if (const auto* label = qobject_cast<QLabel*>(&carrier))
        return label->buddy() && isCalledBy(keys, label->text()) ? label->buddy() : nullptr;
    return nullptr;
}

} // namespace

accesskeys::Target accesskeys::target(const QWidget& window, const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::AltModifier || event.key() == 0 || event.key() == Qt::Key_unknown)
        return {};
    const QKeySequence keys(QKeyCombination(modifiers, static_cast<Qt::Key>(event.key())));
    for (QWidget* carrier : window.findChildren<QWidget*>()) {
        QWidget* found = receiver(*carrier, keys);
        if (found && found->isVisible() && found->isEnabled())
            return {found, found == carrier};
    }
    return {};
}

bool accesskeys::takesFocus(const QWidget& widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible();
}

void accesskeys::activate(const Target& target)
{
    target.control->setFocus(Qt::ShortcutFocusReason);
    auto* button = qobject_cast<QAbstractButton*>(target.control);
    if (button && target.isPressed)
        button->animateClick();
}

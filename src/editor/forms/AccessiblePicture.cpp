#include "AccessiblePicture.h"

#include "ItemPicture.h"

#include <QPointer>

namespace {

/// One item of a picture.
class AccessibleItem final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleItem(ItemPicture& picture, int item) : m_picture(&picture), m_item(item) {}

    int item() const { return m_item; }

    bool isValid() const override { return m_picture && m_item < m_picture->itemCount(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_picture);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isValid() ? m_picture->itemName(m_item) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect inside = m_picture->itemRect(m_item).toAlignedRect();
        return {m_picture->mapToGlobal(inside.topLeft()), inside.size()};
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        state.focusable = true;
        state.selectable = true;
        state.selected = isValid() && m_picture->currentItem() == m_item;
        state.focused = state.selected && m_picture->hasFocus();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (!isValid())
            return;
        m_picture->setFocus();
        m_picture->setCurrentItem(m_item);
        if (action == pressAction())
            m_picture->activate(m_item);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    const QPointer<ItemPicture> m_picture;
    const int m_item;
};

QAccessibleInterface* makePictureInterface(const QString&, QObject* object)
{
    auto* picture = qobject_cast<ItemPicture*>(object);
    return picture ? new AccessiblePicture(picture) : nullptr;
}

} // namespace

void AccessiblePicture::install()
{
    static const bool installed = (QAccessible::installFactory(makePictureInterface), true);
    Q_UNUSED(installed)
}

AccessiblePicture::AccessiblePicture(ItemPicture* picture)
    : QAccessibleWidget(picture, QAccessible::List)
{}

AccessiblePicture::~AccessiblePicture()
{
    for (const QAccessible::Id entry : m_entries)
        if (entry != 0)
            QAccessible::deleteAccessibleInterface(entry);
}

int AccessiblePicture::childCount() const { return picture().itemCount(); }

QAccessibleInterface* AccessiblePicture::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto place = static_cast<std::size_t>(index);
    if (place >= m_entries.size())
        m_entries.resize(place + 1, 0);
    if (m_entries[place] == 0)
        m_entries[place] =
            QAccessible::registerAccessibleInterface(new AccessibleItem(picture(), index));
    return QAccessible::accessibleInterface(m_entries[place]);
}

QAccessibleInterface* AccessiblePicture::childAt(int x, int y) const
{
    return child(picture().itemAt(picture().mapFromGlobal(QPoint(x, y))));
}

int AccessiblePicture::indexOfChild(const QAccessibleInterface* entry) const
{
    const auto* item = dynamic_cast<const AccessibleItem*>(entry);
    return item && item->parent() == this ? item->item() : -1;
}

QAccessibleInterface* AccessiblePicture::focusChild() const
{
    return picture().hasFocus() ? child(picture().currentItem()) : QAccessibleWidget::focusChild();
}

ItemPicture& AccessiblePicture::picture() const { return static_cast<ItemPicture&>(*widget()); }

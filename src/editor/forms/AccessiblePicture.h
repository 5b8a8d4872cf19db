#pragma once

#include <QAccessibleWidget>

#include <vector>

class ItemPicture;

/// An ItemPicture as assistive software has it: a list, with an entry for each item.
class AccessiblePicture final : public QAccessibleWidget {
public:
    /// From now on every ItemPicture is described by this class.
    static void install();

    explicit AccessiblePicture(ItemPicture* picture);
    ~AccessiblePicture() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;

private:
    ItemPicture& picture() const;

    /// Those asked for so far; 0 for the others. The toolkit owns the entries.
    mutable std::vector<QAccessible::Id> m_entries;
};

#pragma once

#include <QScrollArea>

class ItemPicture;

/// A scroll area for a picture. Its size hint has room for the picture's; where there is less, it
/// scrolls, and always shows the current item.
class PictureScroll final : public QScrollArea {
    Q_OBJECT
public:
    explicit PictureScroll(ItemPicture& picture, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    /// Room for the whole picture, if it needs no more than a quarter of the screen.
    QSize minimumSizeHint() const override;

private:
    void showCurrentItem();

    ItemPicture& m_picture;
};

#pragma once

#include <QScrollArea>

/// Holds many fields: asks for room for all of them, scrolls when the screen has less, and follows
/// the focus however it moves.
class FollowingScroll : public QScrollArea {
    Q_OBJECT
public:
    explicit FollowingScroll(QWidget& content, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void follow(const QWidget* focus);
};

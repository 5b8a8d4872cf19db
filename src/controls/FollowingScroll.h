#pragma once

#include <QScrollArea>

/// A scroll area for many fields. Its size hint has room for all of them; on a smaller screen it
/// scrolls, and always shows the field that has the focus.
class FollowingScroll : public QScrollArea {
    Q_OBJECT
public:
    explicit FollowingScroll(QWidget& content, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void follow(const QWidget* focus);
};

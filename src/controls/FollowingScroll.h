#pragma once

#include <QScrollArea>

/// A scroll area for many fields. Its size hint has room for all of them; on a smaller screen it
/// scrolls, and always shows the field that has the focus.
class FollowingScroll : public QScrollArea {
    Q_OBJECT
public:
    explicit FollowingScroll(QWidget& content, QWidget* parent = nullptr);
    ~FollowingScroll() override;

    /// Stands above the content, as wide, and scrolls sideways with it, but never up. Its height is
    /// fixed.
    void setHeader(QWidget& header);

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeHeader();
    void follow(const QWidget* focus);

    QWidget* m_header = nullptr;
    /// Shows as much of the header's width as is in sight of the content's.
    QWidget* m_headerView = nullptr;
};

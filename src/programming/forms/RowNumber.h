#pragma once

#include <QIcon>
#include <QLabel>

/// The number of a row of fields. It can be marked, with a triangle before the number.
class RowNumber final : public QLabel {
    Q_OBJECT
public:
    explicit RowNumber(int number, QWidget* parent = nullptr);

    /// Keeps room for the triangle, so that a mark moves nothing.
    void reserveMark();
    /// Marks the row; the reason is the tool tip and the accessible description. Empty: no mark.
    void setReason(const QString& reason);
    const QString& reason() const { return m_reason; }

    /// The colour of marks on the background of this palette.
    static QColor markColour(const QPalette& palette);
    /// The triangle, for other places that tell of marked rows.
    static QIcon markIcon(const QPalette& palette);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int markSize() const;

    QString m_reason;
};

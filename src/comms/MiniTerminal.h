#pragma once

#include <QPlainTextEdit>

/// The window on a modem dialogue: shows what is appended, and hands on each character typed
/// instead of taking it into its text. Keeps the last maximumText characters.
class MiniTerminal : public QPlainTextEdit {
    Q_OBJECT
public:
    static constexpr int maximumText = 65536;

    explicit MiniTerminal(QWidget* parent = nullptr);

    /// Lines end with CR LF or LF; other control characters are not shown.
    void AppendToTerminal(const QString& text);

    QSize sizeHint() const override;

signals:
    void characterTyped(char character);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

#pragma once

#include <QPlainTextEdit>

/// The window on a modem dialogue: shows what is appended, and hands on each character typed
/// instead of taking it into its text. Keeps the last maximumText characters, in lines of up to
/// maximumLine: longer ones are broken, because each character costs a layout of its whole line.
class MiniTerminal : public QPlainTextEdit {
    Q_OBJECT
public:
    static constexpr int maximumText = 65536;
    static constexpr int maximumLine = 1024;

    explicit MiniTerminal(QWidget* parent = nullptr);

    /// Lines end with CR LF or LF; other control characters are not shown.
    void AppendToTerminal(const QString& text);

    QSize sizeHint() const override;

signals:
    void characterTyped(char character);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

#pragma once

#include <QPlainTextEdit>

/// The window on a modem dialogue: shows what is appended, and hands on each character typed or
/// composed, in the system's code page, instead of taking it into its text; characters that the
/// code page lacks are dropped. Keeps the last maximumText characters, in lines of up to
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
    /// One character, or all that an input method has composed at once.
    void typed(const QByteArray& characters);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

private:
    void handOn(const QString& text);
};

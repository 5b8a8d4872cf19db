#pragma once

#include <QLineEdit>
#include <QString>

#include <array>

/// Edits a code of the SIM card: digits, hidden by asterisks unless they are shown. It leaves
/// nothing of them in memory: it keeps a reference to each text of the toolkit, so that the
/// toolkit allocates new memory for the next one, and then overwrites the old.
class CodeEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CodeEdit(int length, QWidget* parent = nullptr);
    ~CodeEdit() override;

    void setShown(bool shown);

private:
    using Texts = std::array<QString, 2>;

    /// Shares what the toolkit holds now: the text, and the text as it is shown.
    void keepTexts();
    static void overwriteText(QString& text);

    Texts m_kept;
};

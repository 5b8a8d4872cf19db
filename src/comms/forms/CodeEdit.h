#pragma once

#include <QLineEdit>
#include <QString>

#include <vector>

/// Edits a code of the SIM card: digits, hidden by asterisks unless they are shown. It overwrites
/// each text that it has had, because the toolkit does not: it shares the texts with the toolkit,
/// and overwrites each one when nobody else holds it any more. So a code that was copied to the
/// clipboard stays whole there.
///
/// The toolkit's undo history is not overwritten. It keeps single digits, not next to one another.
class CodeEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CodeEdit(int length, QWidget* parent = nullptr);
    ~CodeEdit() override;

    void setShown(bool shown);
    /// Empties it. Unlike `clear`, this cannot be undone, and nothing of the text stays.
    void forget();

private:
    void keepTexts();

    /// The present text and the present text as it is shown, and earlier ones that somebody else
    /// still holds.
    std::vector<QString> m_kept;
};

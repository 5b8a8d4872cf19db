#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The parameters of a file dialog.
struct FileRequest {
    QString title;
    /// Each entry is one filter, for example "Firmware de equipo (*.hex)".
    QStringList filters;
    /// Without the dot. Appended to a name without extension: always when saving, and when opening
    /// only if no file has exactly that name.
    QString defaultExtension;
    /// The folder shown first; the system's choice when empty.
    QString directory = {};
    /// The name proposed for saving.
    QString fileName = {};
    /// The filter proposed, counted from 0.
    int filter = 0;
};

/// What a file dialog was left with.
struct ChosenFile {
    /// Empty when cancelled.
    QString path;
    /// Counted from 0.
    int filter = 0;
};

/// Message boxes, the input box and the file dialogs. The program asks the operator only through
/// this, so that tests can answer. All are modal and let events run. When a call returns, the
/// connection may have ended and the caller may be deleted.
class Dialogs {
public:
    enum class Icon { Information, Warning, Critical };

    virtual ~Dialogs() = default;

    /// A box with one button.
    virtual void tell(Icon icon, const QString& title, const QString& text) = 0;
    /// A box with Yes and No; true for Yes. Closing it means No.
    virtual bool confirm(Icon icon, const QString& title, const QString& text) = 0;
    /// The input box. Nothing when it was cancelled.
    virtual std::optional<QString> askText(const QString& title, const QString& prompt) = 0;
    /// The path chosen; empty when cancelled.
    virtual QString openFile(const FileRequest& request) = 0;
    virtual QString saveFile(const FileRequest& request) = 0;
};

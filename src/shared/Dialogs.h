#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What a file dialog is configured with before each use.
struct FileRequest {
    QString title;
    /// One entry a filter, as "Firmware de equipo (*.hex)".
    QStringList filters;
    /// Without the dot; appended to a name without extension: when saving always, when opening only
    /// where no file has the very name.
    QString defaultExtension;
    /// Where it starts; empty leaves it to the system.
    QString directory;
};

/// Message boxes, the input box and the file dialogs: the one seam through which the program asks
/// its operator, so that tests can answer. All are modal: events run while they are up, so the
/// caller must expect that the connection, or its own window, has ended when they return.
class Dialogs {
public:
    enum class Icon { Information, Warning, Critical };

    virtual ~Dialogs() = default;

    /// A box with one button.
    virtual void tell(Icon icon, const QString& title, const QString& text) = 0;
    /// A box with Yes and No; true only for Yes.
    virtual bool confirm(Icon icon, const QString& title, const QString& text) = 0;
    /// The input box; nothing when it was cancelled.
    virtual std::optional<QString> askText(const QString& title, const QString& prompt) = 0;
    /// The path chosen; empty when cancelled.
    virtual QString openFile(const FileRequest& request) = 0;
    virtual QString saveFile(const FileRequest& request) = 0;
};

#pragma once

#include "ClockModel.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

/// What hct-editor is asked to do.
struct EditorOrder {
    /// To be opened in windows; exactly one when there is a PDF to write.
    QStringList files;
    /// Where the sheet for the wall is written, without any window.
    std::optional<QString> pdf;
    /// What the files are opened as; nothing when it is to be proposed.
    std::optional<ClockModel> model;
    /// Of the sheet; nothing when it is that of the last time.
    std::optional<QString> title;
};

/// What there is to tell when no window is opened.
struct EditorAnswer {
    /// The exit status.
    int status;
    /// For standard output and standard error; lines with their ends.
    QString output;
    QString errors;
};

/// The command line of hct-editor.
namespace EditorCommandLine {

/// Wrong usage, or a file that cannot be read or written.
constexpr int failure = 2;

/// Whether no window is opened, as far as the arguments tell, with the program's name: no display
/// is needed then.
bool needsNoDisplay(const QStringList& arguments);

/// The order that the arguments give (without the program's name), or the answer when there is
/// nothing to do: help, version, or a mistake.
std::variant<EditorOrder, EditorAnswer> read(const QStringList& arguments);

} // namespace EditorCommandLine

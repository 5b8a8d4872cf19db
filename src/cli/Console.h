#pragma once

#include "ExitStatus.h"

#include <QJsonObject>
#include <QString>

/// Standard output, for results only, and standard error, for everything else. Texts are written in
/// UTF-8 and at once, their control characters as question marks, except in objects. When the
/// reader of the results is gone, `print` fails and the program goes on.
class Console {
public:
    enum class Form { Text, Json };
    /// Quiet: notes are dropped, errors are not.
    enum class Notes { Shown, Quiet };

    /// What came of a question. Nobody is asked when standard input is no terminal.
    struct Answer {
        enum class Kind { Yes, No, NobodyAsked, Interrupted };
        Kind kind;
        /// That interrupted it.
        int signalNumber = 0;
    };

    Console(Form form, Notes notes);

    bool isJson() const { return m_form == Form::Json; }
    bool isQuiet() const { return m_notes == Notes::Quiet; }

    /// A line of the result; false when it could not be written.
    bool print(const QString& line);
    /// The result as an object, in one line.
    bool print(const QJsonObject& object);
    /// The result in the form that the user wants.
    bool print(const QJsonObject& object, const QString& text);
    /// The exit status of a program that would end with `status`: a result that could not be
    /// written is told, and no success. A pipe that its reader has closed is no failure.
    ExitStatus finalStatus(ExitStatus status);

    /// A sentence about what is going on.
    void note(const QString& text);
    /// A sentence that is always told, such as the reason of a failure.
    void tell(const QString& text);
    /// Tells why the command is not carried out; the status for that.
    ExitStatus refuse(const QString& reason);
    /// Asks on standard error for a yes or no and waits for the line of the answer. What is not a
    /// yes is a no.
    static Answer confirm(const QString& question);
    /// Replaces the last line of the terminal, see isTerminal. Without a text the line is empty.
    void showLine(const QString& text);
    /// Whether standard error is a terminal, on which lines can be replaced.
    bool isTerminal() const;

private:
    bool writeResult(const QString& line);

    const Form m_form;
    const Notes m_notes;
    bool m_failed = false;
    /// Of the line that the terminal shows, in characters.
    qsizetype m_lineLength = 0;
};

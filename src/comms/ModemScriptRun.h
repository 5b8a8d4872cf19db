#pragma once

#include "ModemScript.h"

#include <QByteArray>
#include <QString>

#include <optional>

class ModemTranscript;

/// A command script while it is run: gives one command after the other, and writes into the
/// transcript what there is to tell of it. A line that fails does not stop it.
class ModemScriptRun {
public:
    explicit ModemScriptRun(ModemTranscript& transcript) : m_transcript(transcript) {}

    /// False when the script could not be read, which is written.
    bool begin(const ModemScript& script);
    /// The next command, without its line end; nothing at the end of the script. Comments, and
    /// lines that are too long to be sent, are written and passed over.
    std::optional<QByteArray> next();
    /// What the reply to the command given last must contain; empty stands for "OK".
    const QByteArray& expected() const { return m_expected; }
    /// Writes that the reply was not the expected one, if one was expected.
    void lineFailed(const QByteArray& reply);

private:
    ModemTranscript& m_transcript;
    ModemScript m_script;
    QByteArray m_expected;
};

#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>

/// What is said to a modem, in the system's code page and with its line end.
namespace modemcommands {

struct Command {
    QByteArray text;
    /// How long a reply is awaited; 0 awaits none.
    std::chrono::milliseconds timeout{3000};
    /// What the terminal shows instead of the text; empty shows the text.
    QString display = {};
};

Command initialise(const QString& words);
Command queryPin();
Command querySignal();
/// The PIN, or with a PUK the PUK and the new PIN; its display has neither. The caller overwrites
/// the text, of which there is no other copy.
Command enterPin(const QByteArray& pin, const QByteArray& puk);
Command dial(const QString& number);
Command scriptLine(const QByteArray& line);
/// As they are, without a line end.
Command typed(const QByteArray& characters);

} // namespace modemcommands

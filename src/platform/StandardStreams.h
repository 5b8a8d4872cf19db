#pragma once

#include <QString>

#include <cstdio>

/// Writes `text` to standard output or standard error at once, in UTF-8; false when it could not be
/// written. A console window of Windows gets UTF-16 in place of it, because it takes bytes for
/// letters of its own code page.
bool writeText(std::FILE* stream, const QString& text);

/// Writes what is not empty to standard output and to standard error. A window program of Windows
/// that has neither a console nor redirected streams shows both in a box instead.
void tellTexts(const QString& output, const QString& errors, const QString& boxTitle);

/// Gives standard streams that are closed a descriptor on which every operation fails. Otherwise a
/// file or port that is opened later would take their number, and get what is written to them. Call
/// it first of all. Windows needs no such thing.
void occupyClosedStreams();

/// Whether a user sees at once what is written to the stream.
bool isTerminal(std::FILE* stream);

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// What another program reads in a PDF. Needs pdftotext and pdfinfo (package poppler-utils).
namespace PdfText {

inline QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The words of a page, from 1, or of all, in the order in which they were written.
inline QStringList words(const QString& path, int page = 0)
{
    QStringList arguments{QStringLiteral("-raw"), QStringLiteral("-enc"), QStringLiteral("UTF-8")};
    if (page > 0)
        arguments += {QStringLiteral("-f"), QString::number(page), QStringLiteral("-l"),
                      QString::number(page)};
    arguments += {path, QStringLiteral("-")};
    return outputOf(QStringLiteral("pdftotext"), arguments).simplified().split(QLatin1Char(' '));
}

/// The value behind a name in the description of the file: "Pages", "Page size", "Title".
inline QString property(const QString& path, const QString& name)
{
    const QStringList lines = outputOf(QStringLiteral("pdfinfo"), {path}).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (line.startsWith(name + QLatin1Char(':')))
            return line.section(QLatin1Char(':'), 1).trimmed();
    return {};
}

} // namespace PdfText

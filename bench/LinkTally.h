#pragma once

#include <QLoggingCategory>

/// What the link has done, counted from its trace: for this nothing is built into the program.
/// Other messages of the program are not printed.
struct LinkTally {
    qint64 sent = 0;
    qint64 answered = 0; ///< with a right checksum
    qint64 damaged = 0;  ///< with a wrong checksum
    qint64 timedOut = 0;
    qint64 closed = 0; ///< not sent, because the port was closed

    qint64 ended() const { return answered + damaged + timedOut; }

    static LinkTally& ofThisProcess()
    {
        static LinkTally tally;
        return tally;
    }
    static void begin()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("hct.link.debug=true"));
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type == QtFatalMsg)
                std::fprintf(stderr, "%s\n", qPrintable(text));
            ofThisProcess().count(text);
        });
    }

private:
    void count(const QString& text)
    {
        // The first half of waiting for an answer begins when its request has been sent.
        if (text == QLatin1String("state 7"))
            ++sent;
        else if (text.startsWith(QLatin1String("answer: ")))
            ++answered;
        else if (text.startsWith(QLatin1String("wrong checksum: ")))
            ++damaged;
        else if (text.startsWith(QLatin1String("no answer: ")))
            ++timedOut;
        else if (text.startsWith(QLatin1String("port closed: ")))
            ++closed;
    }
};

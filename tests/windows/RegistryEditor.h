#pragma once

#include "Processes.h"

#include <QStringList>

/// The system's own registry tool, as an operator uses it.
class RegistryEditor {
public:
    /// The type and the data of a value, "REG_SZ 9600"; empty when there is none.
    static QString query(const QString& key, const QString& name)
    {
        const QString text = run({QStringLiteral("query"), key, QStringLiteral("/v"), name});
        const QStringList lines = text.split(u'\n');
        for (const QString& line : lines) {
            const QString simple = line.simplified();
            if (simple.startsWith(name + u' '))
                return simple.mid(name.size() + 1);
        }
        return {};
    }
    static void add(const QString& key, const QString& name, const QString& type,
                    const QString& data)
    {
        run({QStringLiteral("add"), key, QStringLiteral("/v"), name, QStringLiteral("/t"), type,
             QStringLiteral("/d"), data, QStringLiteral("/f")});
    }
    static void removeKey(const QString& key)
    {
        run({QStringLiteral("delete"), key, QStringLiteral("/f")});
    }

private:
    static QString run(const QStringList& arguments)
    {
        QProcess tool;
        tool.start(QStringLiteral("reg"), arguments);
        if (!hasEnded(tool))
            qFatal("the registry tool did not end");
        return QString::fromLocal8Bit(tool.readAllStandardOutput());
    }
};

#pragma once

#include <QList>
#include <QLoggingCategory>
#include <QString>

#include <functional>
#include <utility>

/// Collects the statuses that the link's receivers have met, from what the link reports for
/// support. One at a time.
class StatusTrace {
public:
    StatusTrace()
    {
        s_current = this;
        QLoggingCategory::setFilterRules(QStringLiteral("hct.link.debug=true"));
        s_previous = qInstallMessageHandler(handle);
    }
    ~StatusTrace()
    {
        qInstallMessageHandler(s_previous);
        QLoggingCategory::setFilterRules(QString());
        s_current = nullptr;
    }
    StatusTrace(const StatusTrace&) = delete;
    StatusTrace& operator=(const StatusTrace&) = delete;

    QList<int> statuses;
    /// Runs at each status, before its receiver has dealt with it; again when the receiver finds
    /// the answer not good.
    std::function<void()> met = [] {};

    QList<int> take() { return std::exchange(statuses, {}); }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
    {
        if (qstrcmp(context.category, "hct.link") != 0)
            return s_previous(type, context, message);
        const QString status = QStringLiteral("status ");
        const qsizetype at = message.lastIndexOf(status);
        if (at < 0)
            return;
        // The receiver has found an answer not good that was good to the link.
        if (message.startsWith(QStringLiteral("answer not good")))
            s_current->statuses.removeLast();
        s_current->statuses.append(message.mid(at + status.size()).toInt());
        s_current->met();
    }

    static inline StatusTrace* s_current = nullptr;
    static inline QtMessageHandler s_previous = nullptr;
};

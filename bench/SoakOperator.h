#pragma once

#include <QMap>
#include <QString>

#include <functional>

class QWidget;
class SoakDialogs;
struct Running;

/// An operator who uses every window of the connected program. Each operation is one of the nine
/// kinds of exchanges with the clock, and ends within a bounded time.
class SoakOperator {
public:
    /// How the operations of a kind have ended.
    struct Score {
        int done = 0;
        int failed = 0; ///< the program has told so
        int cut = 0;    ///< the connection has ended meanwhile
    };

    SoakOperator(Running& running, const SoakDialogs& dialogs);

    void connectToClock();
    void disconnect();
    /// All operations that need a connection, until one ends it.
    void useEveryWindow();

    const QMap<QString, Score>& scores() const { return m_scores; }
    /// Requests that were outstanding when the operator disconnected.
    int forgotten() const { return m_forgotten; }
    /// The operation that has not ended in its time; empty for none.
    QString hung() const { return m_hung; }

private:
    void poll(bool withWindow);
    void setClock(const char* button);
    void switchOutputs();
    void leaveToProgramme();
    void writeProgramme();
    void sendFirmware();

    bool isConnected() const;
    /// Waits for the end of an operation, and counts it. Whether it was done. A box counts as a
    /// failure too.
    bool endOf(
        const QString& kind, const std::function<bool()>& isDone,
        const std::function<bool()>& hasFailed = [] { return false; });
    void choose(const char* entry);
    void click(const char* form, const char* button);
    /// The visible window of that class.
    QWidget* window(const char* form) const;
    template<typename Control>
    Control* find(const char* form, const QString& name) const;
    quint8 statusByte(qsizetype index) const;

    Running& m_running;
    const SoakDialogs& m_dialogs;
    QMap<QString, Score> m_scores;
    int m_forgotten = 0;
    QString m_hung;
};

#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>

/// Tells when a window has been painted for the first time, in microseconds since 1970; or, with
/// the name of a class, when the first widget of that class has been painted.
class FirstWindow final : public QObject {
public:
    FirstWindow(QWidget& window, std::function<void(qint64 moment)> tell,
                const char* ofClass = "QWidget")
        : m_window(window), m_tell(std::move(tell)), m_class(ofClass)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (m_painted || event->type() != QEvent::Paint)
            return false;
        // Any part of the window counts: what its children cover is not painted.
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->window() == &m_window && widget->inherits(m_class)) {
            m_painted = true;
            QTimer::singleShot(0, this, &FirstWindow::report);
        }
        return false;
    }

private:
    void report()
    {
        using namespace std::chrono;
        const auto now = duration_cast<microseconds>(system_clock::now().time_since_epoch());
        m_tell(now.count());
    }

    QWidget& m_window;
    std::function<void(qint64)> m_tell;
    const char* m_class;
    bool m_painted = false;
};

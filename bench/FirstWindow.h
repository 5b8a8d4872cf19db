#pragma once

#include "Figures.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <chrono>

/// Ends the process once a window has been painted for the first time, and prints when that was
/// (microseconds since 1970) and the memory held then (PSS in kB).
class FirstWindow final : public QObject {
public:
    explicit FirstWindow(QWidget& window) : m_window(window)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (m_painted || event->type() != QEvent::Paint)
            return false;
        // Whichever part of the window comes first: what its parts cover is not painted.
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->window() == &m_window) {
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
        std::printf("%lld %lld\n", static_cast<long long>(now.count()),
                    static_cast<long long>(figures::residentKilobytes()));
        QCoreApplication::quit();
    }

    QWidget& m_window;
    bool m_painted = false;
};

#include "Pacer.h"

#include <QSocketNotifier>

#include <algorithm>
#include <sys/timerfd.h>
#include <unistd.h>

namespace simulator {

namespace {

using std::chrono::nanoseconds;

constexpr qint64 nanosecondsOfTenBits = 10'000'000'000;
constexpr qsizetype maximumWaiting = 65536;

/// The clock that the timer uses.
nanoseconds now() { return std::chrono::steady_clock::now().time_since_epoch(); }

nanoseconds wireTime(qsizetype bytes, int rate)
{
    return nanoseconds(rate > 0 ? bytes * nanosecondsOfTenBits / rate : 0);
}

} // namespace

QList<Departure> departures(nanoseconds start, const QByteArray& bytes, int rate, int burst)
{
    QList<Departure> result;
    const qsizetype step = rate > 0 ? std::max(burst, 1) : bytes.size();
    for (qsizetype at = 0; at < bytes.size(); at += step) {
        const qsizetype end = std::min(at + step, bytes.size());
        result += Departure{start + wireTime(end, rate), bytes.mid(at, end - at)};
    }
    return result;
}

Pacer::Pacer(Write write, QObject* parent)
    : QObject(parent),
      m_write(std::move(write)),
      m_timer(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      m_notifier(new QSocketNotifier(m_timer, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &Pacer::writeDue);
}

Pacer::~Pacer()
{
    m_notifier->setEnabled(false);
    ::close(m_timer);
}

void Pacer::received(qsizetype count)
{
    m_receptionEnd = std::max(m_receptionEnd, now()) + wireTime(count, m_rate);
}

void Pacer::send(const QByteArray& bytes, std::chrono::microseconds delay,
                 std::chrono::milliseconds byteGap)
{
    if (bytes.isEmpty() || m_waitingBytes + bytes.size() > maximumWaiting)
        return;
    const nanoseconds current = now();
    const nanoseconds start =
        std::max({current, m_rate > 0 ? m_receptionEnd : current, m_sendingEnd}) + delay;
    QList<Departure> added = departures(start, bytes, byteGap.count() > 0 ? 0 : m_rate, m_burst);
    if (byteGap.count() > 0) {
        added.clear();
        for (qsizetype at = 0; at < bytes.size(); ++at)
            added += Departure{start + (at + 1) * nanoseconds(byteGap), bytes.mid(at, 1)};
    }
    m_sendingEnd = added.last().at;
    m_waiting += added;
    m_waitingBytes += bytes.size();
    writeDue();
}

void Pacer::clear()
{
    m_waiting.clear();
    m_waitingBytes = 0;
    m_sendingEnd = nanoseconds(0);
    arm();
}

void Pacer::writeDue()
{
    quint64 expirations = 0;
    [[maybe_unused]] const ssize_t drained = ::read(m_timer, &expirations, sizeof expirations);
    while (!m_waiting.isEmpty() && m_waiting.first().at <= now()) {
        const QByteArray bytes = m_waiting.takeFirst().bytes;
        m_waitingBytes -= bytes.size();
        m_write(bytes);
    }
    arm();
}

void Pacer::arm()
{
    itimerspec moment{};
    if (!m_waiting.isEmpty()) {
        const auto due = m_waiting.first().at;
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(due);
        moment.it_value.tv_sec = seconds.count();
        moment.it_value.tv_nsec = (due - seconds).count();
    }
    ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &moment, nullptr);
}

} // namespace simulator

#include "Progress.h"

#include "Console.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

Progress::Progress(Console& console, const QString& what, int total, std::function<Moment()> now)
    : m_console(console),
      m_what(what),
      m_total(std::max(total, 1)),
      m_now(std::move(now)),
      m_start(m_now())
{
    advance(0);
}

void Progress::advance(int done)
{
    if (m_console.isQuiet() || !m_console.isTerminal())
        return;
    using std::chrono::seconds;
    const auto elapsed = m_now() - m_start;
    const auto left =
        done > 0 ? std::chrono::ceil<seconds>(elapsed / done * (m_total - done)) : seconds::zero();
    const QString line = text(m_what, done, m_total, left);
    // Writing takes time that the line needs.
    if (line == m_shown)
        return;
    m_shown = line;
    m_console.showLine(line);
}

void Progress::end(const QString& sentence)
{
    if (!m_shown.isEmpty())
        m_console.showLine({});
    m_shown.clear();
    if (!sentence.isEmpty())
        m_console.note(sentence);
}

QString Progress::text(const QString& what, int done, int total, std::chrono::seconds left)
{
    QString share =
        u"%1: %2 % (%3 de %4)"_s.arg(what).arg(100 * qint64{done} / total).arg(done).arg(total);
    if (left == std::chrono::seconds::zero())
        return share;
    const bool inSeconds = left < std::chrono::minutes(1);
    const auto count =
        inSeconds ? left.count() : std::chrono::ceil<std::chrono::minutes>(left).count();
    return u"%1, %2 %3 %4"_s.arg(share, count == 1 ? u"queda"_s : u"quedan"_s,
                                 QString::number(count), inSeconds ? u"s"_s : u"min"_s);
}

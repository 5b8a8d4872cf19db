#include "DayWords.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace DayWords {

namespace {

constexpr int daysOfAWeek = 7;
constexpr std::array<const char16_t*, dayFlagCount> names{u"lunes",    u"martes",   u"miercoles",
                                                          u"jueves",   u"viernes",  u"sabados",
                                                          u"domingos", u"festivos", u"vacaciones"};

/// Letters of days without anything between them: "lmxjv", "lmmjv".
std::optional<std::vector<int>> daysOfLetters(const QString& word)
{
    constexpr int tuesday = 1;
    constexpr int wednesday = 2;
    std::vector<int> found;
    for (const QChar letter : word) {
        const std::optional<int> one = day(letter);
        if (!one)
            return std::nullopt;
        // Whoever does not write X for Wednesday writes M twice.
        const bool again = *one == tuesday && !found.empty() && found.back() == tuesday;
        found.push_back(again ? wednesday : *one);
    }
    return found;
}

/// Reads words from left to right.
class Reader {
public:
    void take(const QString& word)
    {
        if (isRangeWord(word))
            m_inRange = m_last.has_value();
        else if (const auto one = day(word))
            takeDay(*one);
        else if (word == u"laborables")
            std::fill_n(m_days.flags.begin(), workingDayCount, true);
        else if (const auto several = daysOfLetters(word))
            std::for_each(several->begin(), several->end(), [this](int each) { set(each); });
        else if (!isJoiningWord(word))
            m_days.unknown.append(word);
    }
    const Days& days() const { return m_days; }

private:
    static bool isRangeWord(const QString& word)
    {
        return word == u"a" || word == u"al" || word == u"-" || word == u"hasta";
    }
    static bool isJoiningWord(const QString& word)
    {
        return word == u"y" || word == u"e" || word == u"de" || word == u"del" || word == u"los" ||
               word == u"el";
    }

    void takeDay(int one)
    {
        if (m_inRange && one < daysOfAWeek && *m_last < daysOfAWeek)
            for (int between = *m_last; between != one; between = (between + 1) % daysOfAWeek)
                set(between);
        set(one);
        m_last = one;
        m_inRange = false;
    }
    void set(int one) { m_days.flags[static_cast<std::size_t>(one)] = true; }

    Days m_days;
    std::optional<int> m_last;
    bool m_inRange = false;
};

} // namespace

QString plain(const QString& text)
{
    QString letters = text.normalized(QString::NormalizationForm_KD).toLower();
    letters.removeIf([](QChar letter) { return letter.category() == QChar::Mark_NonSpacing; });
    return letters.trimmed();
}

std::optional<int> day(const QString& word)
{
    constexpr int wednesday = 2;
    const QString letters = plain(word);
    if (letters.isEmpty())
        return std::nullopt;
    if (letters == u"x")
        return wednesday;
    // The first that begins so: M is Tuesday and V Friday.
    const auto found = std::find_if(names.begin(), names.end(), [&](const char16_t* name) {
        return QStringView(name).startsWith(letters);
    });
    if (found == names.end())
        return std::nullopt;
    return static_cast<int>(found - names.begin());
}

Days days(const QString& text)
{
    // A dash stands for itself; a point only ends a short form.
    static const QRegularExpression word(u"[^\\s,;/+.–-]+|[–-]"_s);
    Reader reader;
    auto matches = word.globalMatch(plain(text));
    while (matches.hasNext())
        reader.take(matches.next().captured().replace(u'–', u'-'));
    return reader.days();
}

} // namespace DayWords

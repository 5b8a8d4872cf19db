#include "DayWords.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace DayWords {

namespace {

constexpr int daysOfAWeek = 7;
constexpr std::array<const char16_t*, dayFlagCount> names{u"lunes",    u"martes",   u"miercoles",
                                                          u"jueves",   u"viernes",  u"sabados",
                                                          u"domingos", u"festivos", u"vacaciones"};

/// Of a plain word.
std::optional<int> dayOf(QStringView word)
{
    constexpr int wednesday = 2;
    if (word.isEmpty())
        return std::nullopt;
    if (word == u"x")
        return wednesday;
    // The first that begins so: M is Tuesday and V Friday.
    const auto found = std::find_if(names.begin(), names.end(), [&](const char16_t* name) {
        return QStringView(name).startsWith(word);
    });
    if (found == names.end())
        return std::nullopt;
    return static_cast<int>(found - names.begin());
}

/// Letters of days without anything between them: "lmxjv", "lmmjv".
std::optional<std::vector<int>> daysOfLetters(QStringView word)
{
    constexpr int tuesday = 1;
    constexpr int wednesday = 2;
    std::vector<int> found;
    for (qsizetype index = 0; index < word.size(); ++index) {
        const std::optional<int> one = dayOf(word.sliced(index, 1));
        if (!one)
            return std::nullopt;
        // Whoever does not write X for Wednesday writes M twice.
        const bool again = *one == tuesday && !found.empty() && found.back() == tuesday;
        found.push_back(again ? wednesday : *one);
    }
    return found;
}

bool isDash(QChar letter) { return letter == u'-' || letter == u'–'; }

/// A dash stands for itself, too; a point only ends a short form.
bool isBetweenWords(QChar letter)
{
    return letter.isSpace() || isDash(letter) || QStringView(u",;/+.").contains(letter);
}

/// Reads words from left to right.
class Reader {
public:
    void take(QStringView word)
    {
        if (isRangeWord(word))
            m_inRange = m_last.has_value();
        else if (const auto one = dayOf(word))
            takeDay(*one);
        else if (word == u"laborables")
            std::fill_n(m_days.flags.begin(), workingDayCount, true);
        else if (const auto several = daysOfLetters(word))
            std::for_each(several->begin(), several->end(), [this](int each) { set(each); });
        else if (!isJoiningWord(word))
            m_days.unknown.append(word.toString());
    }
    const Days& days() const { return m_days; }

private:
    static bool isRangeWord(QStringView word)
    {
        return word == u"a" || word == u"al" || word == u"-" || word == u"hasta";
    }
    static bool isJoiningWord(QStringView word)
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

std::optional<int> day(const QString& word) { return dayOf(plain(word)); }

Days days(const QString& text)
{
    const QString letters = plain(text);
    Reader reader;
    qsizetype begin = 0;
    for (qsizetype index = 0; index <= letters.size(); ++index) {
        const bool isEnd = index == letters.size();
        if (!isEnd && !isBetweenWords(letters[index]))
            continue;
        if (index > begin)
            reader.take(QStringView(letters).sliced(begin, index - begin));
        if (!isEnd && isDash(letters[index]))
            reader.take(u"-");
        begin = index + 1;
    }
    return reader.days();
}

} // namespace DayWords

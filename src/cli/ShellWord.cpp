#include "ShellWord.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isPlain(QChar character)
{
#ifdef Q_OS_WIN
    constexpr QStringView marks(u"_+:./\\~-");
#else
    // The comma has a meaning in braces only, which are not plain.
    constexpr QStringView marks(u"_+:./,@-");
#endif
    return character.isLetterOrNumber() || marks.contains(character);
}

} // namespace

QString shellWord(QString word)
{
    if (word.startsWith(u'-'))
        word.prepend(u"./"_s);
    if (!word.isEmpty() && std::all_of(word.cbegin(), word.cend(), isPlain))
        return word;
#ifdef Q_OS_WIN
    // No file name has a quotation mark there.
    return u'"' + word + u'"';
#else
    return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\'';
#endif
}

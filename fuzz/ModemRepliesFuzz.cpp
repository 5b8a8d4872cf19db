#include "AnsiText.h"
#include "Input.h"
#include "ModemReplies.h"
#include "ModemTranscript.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

char upperCase(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
}

/// What must be shown of a dialogue: the characters of a line are kept, those that were taken back
/// removed, and each knows whether a code follows it.
class ExpectedMask {
public:
    char take(char character, bool codeJustSent)
    {
        if (character == '\r' || character == '\n')
            m_line.clear();
        if (character == '\r' || character == '\n' || character == '\b') {
            if (character == '\b' && !m_line.empty())
                m_line.pop_back();
            return character;
        }
        const bool isHidden = !m_line.empty() && m_line.back().beforeCode;
        m_line.push_back({upperCase(character), false});
        m_line.back().beforeCode = isHidden || endsInCommand();
        if (isHidden)
            return character == ',' ? ',' : '*';
        return codeJustSent && isDigit(character) && m_line.front().character != '+' ? '*'
                                                                                     : character;
    }
    /// Longer lines than the mask keeps are masked by their end alone.
    bool isLong() const { return m_line.size() > 250; }

private:
    struct Shown {
        char character;
        bool beforeCode;
    };

    bool endsInCommand() const
    {
        static constexpr std::string_view backwards = "=NIPC";
        std::size_t found = 0;
        for (auto at = m_line.rbegin(); at != m_line.rend() && found < backwards.size(); ++at) {
            if (at->character == ' ' && found > 0)
                continue;
            if (at->character != backwards[found++])
                return false;
        }
        return found == backwards.size();
    }

    std::vector<Shown> m_line;
};

bool contains(const std::string& text, std::string_view word)
{
    return text.find(word) != std::string::npos;
}

using modemreplies::Outcome;

/// The value of a signal reply as its digits say; -1 when there is none below 100.
int signalValue(const std::string& reply)
{
    std::size_t at = reply.find(':') + 1;
    while (at < reply.size() && std::isspace(static_cast<unsigned char>(reply[at])) != 0)
        ++at;
    while (at + 1 < reply.size() && reply[at] == '0' && isDigit(reply[at + 1]))
        ++at;
    const std::string digits = reply.substr(at, reply.find_first_not_of("0123456789", at) - at);
    return digits.empty() || digits.size() > 2 ? -1 : std::stoi(digits);
}

modemreplies::Verdict signalVerdict(const std::string& reply)
{
    const std::size_t name = reply.find("+CSQ:");
    const std::size_t comma = name == reply.npos ? reply.npos : reply.find(',', name);
    if (comma == reply.npos || !reply.ends_with("\r\nOK\r\n") || comma + 6 >= reply.size())
        return {};
    const int value = signalValue(reply);
    if (value == 99)
        return {Outcome::Succeeded, u"El módem no tiene cobertura"_s};
    if (value < 0 || value > 31)
        return {Outcome::Succeeded, {}};
    return {Outcome::Succeeded,
            u"Nivel de señal "_s + QString::number(2 * value - 113) + u"dBm [-113...-51]"_s};
}

struct Word {
    LinkState phase;
    const char* word;
    Outcome outcome;
    QString line;
};

modemreplies::Verdict expectedVerdict(LinkState phase, const std::string& reply,
                                      const std::string& expected)
{
    static const std::vector<Word> words = {
        {LinkState::Initialisation, "OK", Outcome::Succeeded, {}},
        {LinkState::PinSent, "OK", Outcome::Succeeded, u"Código PIN/PUK enviado correctamente"_s},
        {LinkState::PinQuery, "+CPIN: READY", Outcome::Succeeded, u"No se necesita código PIN"_s},
        {LinkState::PinQuery, "+CPIN: SIM PIN", Outcome::Succeeded, u"Debe introducir el PIN"_s},
        {LinkState::PinQuery, "+CPIN: SIM PUK", Outcome::Succeeded,
         u"Debe introducir el código PUK y un nuevo PIN"_s},
        {LinkState::Dialling, "BUSY", Outcome::Busy, {}},
        {LinkState::Dialling, "CONNECT", Outcome::Succeeded, u"Conexión establecida"_s}};
    const int number = static_cast<int>(phase);
    if (number < 1 || number > 6)
        return {};
    if (contains(reply, "ERROR"))
        return {Outcome::Failed, {}};
    if (phase == LinkState::SignalQuery)
        return signalVerdict(reply);
    if (phase == LinkState::ScriptCommand && contains(reply, expected.empty() ? "OK" : expected))
        return {Outcome::Succeeded, {}};
    for (const Word& word : words)
        if (word.phase == phase && contains(reply, word.word))
            return {word.outcome, word.line};
    return {};
}

} // namespace

/// Whatever a modem replies: what is shown has no code in it and is all handed on in batches within
/// their bound, and the verdict is the one that a search of the whole reply finds. The input:
/// phase, the room that a comment leaves in the first batch (0: there is none), how long the
/// expected word is (below 8), that word, the reply.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const auto phase = static_cast<LinkState>(input.byte() % 9);
    const quint8 roomInBatch = input.byte();
    QByteArray word;
    for (int i = input.byte() & 7; i > 0; --i)
        word.append(static_cast<char>(input.byte()));
    const QByteArray reply = input.rest();

    QString terminal;
    ModemTranscript transcript([&](const QString& text) {
        require(!text.isEmpty() && text.size() <= ModemTranscript::batch + 1);
        terminal += text;
    });
    const QString comment(ModemTranscript::batch - roomInBatch, u'x');
    if (roomInBatch > 0)
        transcript.comment(comment);
    ExpectedMask mask;
    std::string shown;
    bool isLong = false;
    for (const char character : reply) {
        const bool codeJustSent = phase == LinkState::PinSent;
        shown += transcript.received(character, codeJustSent);
        const char expected = mask.take(character, codeJustSent);
        isLong = (isLong && character != '\r' && character != '\n') || mask.isLong();
        require(isLong || shown.back() == expected);
    }
    transcript.end();
    const QByteArray judged(shown.data(), static_cast<qsizetype>(shown.size()));
    require(terminal ==
            (roomInBatch > 0 ? comment + u"\r\n"_s : QString()) + AnsiText::toUnicode(judged));
    require(modemreplies::judge(phase, judged, word) ==
            expectedVerdict(phase, shown, word.toStdString()));
    return 0;
}

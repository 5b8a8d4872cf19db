#include "ComPortClient.h"
#include "Input.h"
#include "TelnetReader.h"

#include <string>
#include <vector>

namespace {

/// What a far end has said, found byte by byte.
struct Said {
    std::string data;
    /// Verb, option and value of each command.
    std::vector<std::string> commands;

    bool operator==(const Said&) const = default;
};

/// Reads without a state: looks forward from each command to its end.
Said expected(const std::string& bytes)
{
    Said said;
    for (std::size_t at = 0; at < bytes.size();) {
        if (bytes[at] != '\xff') {
            said.data += bytes[at++];
            continue;
        }
        if (at + 1 >= bytes.size())
            break;
        const char verb = bytes[at + 1];
        if (verb == '\xff')
            said.data += verb;
        if (verb < '\xfa' || verb > '\xfe') {
            at += 2;
            continue;
        }
        if (at + 2 >= bytes.size())
            break;
        std::string command{verb, bytes[at + 2]};
        std::size_t end = at + 3;
        if (verb == '\xfa') {
            if (command[1] == '\xff')
                end = at + 2;
            while (end + 1 < bytes.size() && (bytes[end] != '\xff' || bytes[end + 1] == '\xff')) {
                command += bytes[end];
                end += bytes[end] == '\xff' ? 2 : 1;
            }
            if (end + 1 >= bytes.size())
                break;
            // Without its end: another command begins there.
            if (bytes[end + 1] != '\xf0') {
                at = end;
                continue;
            }
            end += 2;
            command.resize(std::min<std::size_t>(command.size(), 2 + TelnetReader::longestValue));
        }
        said.commands.push_back(command);
        at = end;
    }
    return said;
}

/// The length of a piece by the pattern, 1 to 16 bytes.
qsizetype lengthOf(quint8 pattern, qsizetype piece)
{
    return 1 + (pattern >> (piece % 2 == 0 ? 0 : 4)) % 16;
}

template<typename Take>
void inPieces(const QByteArray& bytes, quint8 pattern, Take take)
{
    qsizetype piece = 0;
    for (qsizetype at = 0; at < bytes.size(); at += lengthOf(pattern, piece++))
        take(QByteArrayView(bytes).sliced(at,
                                          std::min(lengthOf(pattern, piece), bytes.size() - at)));
}

Said readInPieces(const QByteArray& bytes, quint8 pattern)
{
    TelnetReader reader;
    QByteArray data;
    Said said;
    inPieces(bytes, pattern, [&](QByteArrayView piece) {
        while (const auto command = reader.read(piece, data))
            said.commands.push_back(
                std::string{static_cast<char>(command->verb), static_cast<char>(command->option)} +
                command->value.toStdString());
        require(piece.isEmpty());
    });
    said.data = data.toStdString();
    return said;
}

/// The bytes of every answer: each option is refused once in either direction, and the line is set
/// once.
constexpr qsizetype mostAnswers = 2 * 256 * 3 + 38 + 14;

} // namespace

/// Any bytes of a far end in any pieces: data and commands are those that a simple reader finds,
/// the answers are bounded, and the pieces make no difference to the end. The input: how it is cut
/// into pieces, what is received.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const quint8 pattern = input.byte();
    const QByteArray received = input.rest();

    const Said whole = expected(received.toStdString());
    require(readInPieces(received, pattern) == whole);

    ComPortClient atOnce({}, true, false);
    QByteArray data;
    QByteArray answers;
    atOnce.take(received, data, answers);
    require(data.toStdString() == whole.data);
    require(answers.size() <= mostAnswers);
    require((atOnce.step() == ComPortClient::Step::Refused) == !atOnce.refusal().isEmpty());

    ComPortClient byPieces({}, true, false);
    QByteArray otherData;
    QByteArray otherAnswers;
    inPieces(received, pattern,
             [&](QByteArrayView piece) { byPieces.take(piece, otherData, otherAnswers); });
    require(otherData == data && otherAnswers == answers);
    require(byPieces.step() == atOnce.step() && byPieces.refusal() == atOnce.refusal());
    require(byPieces.isSuspended() == atOnce.isSuspended());
    return 0;
}

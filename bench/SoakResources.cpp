#include "SoakResources.h"

#include "Figures.h"

#include <QDir>

#include <array>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QStringList openDescriptors()
{
    const QDir folder(u"/proc/self/fd"_s);
    const QStringList names =
        folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    QStringList targets;
    for (const QString& name : names) {
        const QByteArray path = folder.filePath(name).toLocal8Bit();
        std::array<char, 256> target{};
        // The one that read the folder is closed already.
        if (::readlink(path.constData(), target.data(), target.size() - 1) > 0)
            targets += QString::fromLocal8Bit(target.data());
    }
    targets.sort();
    return targets;
}

} // namespace

SoakResources SoakResources::ofThisProcess()
{
    SoakResources now;
    now.kilobytes = figures::residentKilobytes();
    now.ownKilobytes = figures::ofThisProcess(u"smaps_rollup"_s, "Pss_Anon:");
    now.descriptors = openDescriptors();
    return now;
}

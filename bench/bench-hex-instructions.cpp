// Loads a large image the number of times given and nothing else, for counting the loader's
// instructions: run it under a profiler for 1 and for 11 times; a tenth of the difference, divided
// by the file's length (the output), is what one byte takes without start-up and generation.
//   valgrind --tool=callgrind bench-hex-instructions 1

#include "HexFile.h"
#include "HexImages.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"image.hex"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(hexImage(22220, 16)) < 0)
        return 1;
    file.close();

    HexFile hexFile;
    for (int times = argc > 1 ? std::atoi(argv[1]) : 1; times > 0; --times)
        if (hexFile.LoadHexFile(file.fileName()) != HexFile::Outcome::Loaded)
            return 1;
    std::printf("%lld\n", static_cast<long long>(file.size()));
    return 0;
}

// Loads a large image as many times as given, to count the loader's instructions. Run it under a
// profiler with 1 and with 11. A tenth of the difference, divided by the file's length (the
// output), is the number of instructions a byte, without start and generation.
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

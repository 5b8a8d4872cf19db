// The status log with 200,000 lines: the CPU time of one more line, and the memory of all of them.

#include "ClockOfDay.h"
#include "Figures.h"
#include "LogText.h"
#include "frmRexistroEstado.h"

#include <QApplication>
#include <QMdiArea>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int standing = 200'000;
constexpr int added = 20'000;

std::size_t allocated()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Processes events now and then, as the event loop does.
void append(frmRexistroEstado& log, int lines)
{
    for (int line = 0; line < lines; ++line) {
        log.Rexistra(u"Fallo en lectura de datos generales"_s, false);
        if (line % 100 == 0)
            QCoreApplication::processEvents();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const SystemClockOfDay clock;
    QMdiArea area;
    area.resize(1000, 700);
    area.show();
    auto* log = new frmRexistroEstado(area, clock);
    log->showForm();
    append(*log, 1);
    const auto* text = log->findChild<LogText*>();
    const auto textOfALine = static_cast<double>(text->toPlainText().toUtf8().size());

    const std::size_t before = allocated();
    append(*log, standing);
    const double memory = static_cast<double>(allocated() - before) / standing;
    figures::print("Memory of a line beside its text", memory - textOfALine, 100, "bytes");

    const double start = figures::cpuSeconds();
    append(*log, added);
    const double microseconds = (figures::cpuSeconds() - start) * 1e6 / added;
    figures::print("Appending to 200000 lines", microseconds, 20, "us");
    return text->lines().lineCount() == standing + added + 2 ? 0 : 1;
}

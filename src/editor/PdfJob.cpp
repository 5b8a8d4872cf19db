#include "PdfJob.h"

#include "EditorCommandLine.h"
#include "ModelProposal.h"
#include "ProgrammeCheck.h"
#include "ProgrammeDocument.h"
#include "RecentFiles.h"
#include "WallSheet.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// The one given, or that of the last time, or the name of the file.
QString titleOf(const QString& path, const EditorOrder& order, const RecentFiles& recent)
{
    if (order.title)
        return *order.title;
    const auto known = recent.find(path);
    return known && !known->wallTitle.isEmpty() ? known->wallTitle
                                                : QFileInfo(path).completeBaseName();
}

QString linesOf(const QString& path, const QList<ProgrammeProblem>& problems)
{
    QString lines;
    for (const ProgrammeProblem& problem : problems)
        lines += u"%1, línea %2: %3\n"_s.arg(path).arg(problem.line).arg(problem.text);
    return lines;
}

} // namespace

EditorAnswer PdfJob::run(const EditorOrder& order, const RecentFiles& recent)
{
    const QString path = order.files.constFirst();
    ProgrammeDocument document(order.model.value_or(ModelProposal::of(path, recent)));
    const auto opened = document.open(path, document.model());
    const QString problems = linesOf(path, opened.problems);
    QString failure = opened.failure;
    if (ProgrammeCheck::isMisread(opened.problems))
        failure = u"No se escribe la hoja, porque faltarían valores que no se pueden leer."_s;
    if (failure.isEmpty() && QFileInfo(path) == QFileInfo(*order.pdf))
        failure = u"La hoja no puede escribirse encima del programa."_s;
    if (failure.isEmpty())
        failure = WallSheet(document.programme(), document.model(), titleOf(path, order, recent))
                      .writePdf(*order.pdf);
    if (failure.isEmpty())
        return {0, {}, problems};
    return {EditorCommandLine::failure, {}, problems + failure + u'\n'};
}

#include "FileFailure.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString shownPath(const QString& path) { return QDir::toNativeSeparators(path); }

} // namespace

QString FileFailure::ofReading(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return u"No existe el archivo \"%1\"."_s.arg(shownPath(path));
    if (!file.isFile())
        return u"\"%1\" no es un archivo."_s.arg(shownPath(path));
    if (!file.isReadable())
        return u"No hay permiso para leer el archivo \"%1\"."_s.arg(shownPath(path));
    return u"No se ha podido leer el archivo \"%1\"."_s.arg(shownPath(path));
}

QString FileFailure::ofWriting(const QString& path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return u"No se puede llegar a la carpeta \"%1\"."_s.arg(shownPath(folder.filePath()));
    if (file.exists() && !file.isFile())
        return u"\"%1\" no es un archivo."_s.arg(shownPath(path));
    if (file.exists() && !file.isWritable())
        return u"No hay permiso para cambiar el archivo \"%1\"."_s.arg(shownPath(path));
    if (!folder.isWritable())
        return u"No hay permiso para escribir en la carpeta \"%1\"."_s.arg(
            shownPath(folder.filePath()));
    return u"No se ha podido escribir el archivo \"%1\". Puede que el disco esté lleno."_s.arg(
        shownPath(path));
}

#include "Spanish.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

void speakSpanish(QTranslator& toolkit)
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    // The Windows program contains the toolkit's texts.
    if (toolkit.load(u"qtbase_es"_s, u":/i18n"_s) ||
        toolkit.load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit);
}

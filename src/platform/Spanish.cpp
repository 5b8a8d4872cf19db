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
    const QString texts = u"qtbase_es"_s;
    if (toolkit.load(texts, u":/i18n"_s) ||
        toolkit.load(texts, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit);
}

#include "TraceFile.h"

#include "LinkTrace.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

/// The one mutable global: the toolkit gives its messages to a plain function without user data.
TraceFile* current = nullptr;

bool isOfTheLink(QLatin1StringView category)
{
    return category == QLatin1StringView(linkEvents().categoryName()) ||
           category == QLatin1StringView(linkFrames().categoryName());
}

QString programAndSystem()
{
    return u"%1, Qt %2, %3, %4"_s.arg(
        QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion()),
        QSysInfo::prettyProductName(), QDateTime::currentDateTime().toString(Qt::ISODate));
}

} // namespace

TraceFile::TraceFile(const QString& path, Moment programStart)
    : m_file(path), m_programStart(programStart)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return;
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return;
    write(QCoreApplication::applicationName(), programAndSystem());
    current = this;
    m_others = qInstallMessageHandler(take);
    QLoggingCategory::setFilterRules(u"hct.link.debug=true\nhct.link.frames.debug=true"_s);
}

TraceFile::~TraceFile()
{
    if (!isOpen())
        return;
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(m_others);
    current = nullptr;
}

QString TraceFile::error() const
{
    const QString reason =
        m_file.error() == QFile::NoError ? u"no es un archivo"_s : m_file.errorString();
    return u"No se puede escribir la traza en %1 (%2)."_s.arg(m_file.fileName(), reason);
}

void TraceFile::take(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QLatin1StringView category(context.category);
    if (isOfTheLink(category))
        current->write(category, text);
    else
        current->m_others(type, context, text);
}

void TraceFile::write(const QString& what, const QString& text)
{
    using std::chrono::microseconds;
    const auto now = std::chrono::steady_clock::now();
    const auto elapsed = std::chrono::duration_cast<microseconds>(now - m_programStart);
    QString line = u"%1 %2 %3"_s.arg(QString::number(elapsed.count()), what, text);
    // Settings and device names may hold any characters.
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    m_file.write(line.toUtf8() + '\n');
}

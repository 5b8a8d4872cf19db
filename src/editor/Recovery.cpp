#include "Recovery.h"

#include "IntervalTimer.h"
#include "ProgrammeDocument.h"
#include "RecoveryFile.h"
#include "RecoveryFolder.h"
#include "WholeFile.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

Recovery::Recovery(ProgrammeDocument& document, const QString& folder, IntervalTimer& timer,
                   QObject* parent)
    : QObject(parent),
      m_document(document),
      m_folder(folder),
      m_path(folder + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_timer(timer)
{
    m_timer.setInterval(std::chrono::milliseconds(intervalMilliseconds));
    connect(&m_timer, &IntervalTimer::tick, this, &Recovery::takeTick);
    connect(&m_document, &ProgrammeDocument::changed, this, &Recovery::noteChange);
    connect(&m_document, &ProgrammeDocument::modifiedChanged, this, [this](bool modified) {
        if (!modified)
            remove();
    });
    noteChange();
}

Recovery::~Recovery()
{
    m_timer.setEnabled(false);
    if (!m_isKept)
        remove();
}

bool Recovery::writeNow()
{
    if (m_isPending)
        write();
    return !m_isPending;
}

void Recovery::keep()
{
    m_isKept = true;
    writeNow();
}

void Recovery::noteChange()
{
    if (!m_document.isModified())
        return remove();
    m_isKept = false;
    m_isPending = true;
    if (!m_timer.isEnabled())
        write();
}

void Recovery::takeTick()
{
    m_timer.setEnabled(false);
    writeNow();
}

void Recovery::write()
{
    m_timer.setEnabled(true);
    m_isPending = !writeFile();
    if (!std::exchange(m_hasFailed, m_isPending) && m_isPending)
        emit failed();
}

bool Recovery::writeFile()
{
    if (!m_lock) {
        if (!QDir().mkpath(m_folder))
            return false;
        m_lock.emplace(m_path + RecoveryFolder::lockExtension());
        // It is stale when its owner has ended, and never before.
        m_lock->setStaleLockTime(0);
        if (!m_lock->tryLock())
            m_lock.reset();
    }
    return m_lock && WholeFile::replace(m_path + RecoveryFolder::workExtension(),
                                        RecoveryFile::text(m_document.unsavedWork()));
}

void Recovery::remove()
{
    m_isPending = false;
    if (!m_lock)
        return;
    QFile::remove(m_path + RecoveryFolder::workExtension());
    m_lock.reset();
}

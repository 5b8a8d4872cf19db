#pragma once

#include <QFile>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

/// The administrator may read and write everything, so tests of rights run as another user, who
/// becomes the owner of the folder.
class OrdinaryUser {
public:
#ifdef Q_OS_UNIX
    explicit OrdinaryUser(const QString& folder)
    {
        if (m_wasAdministrator)
            m_changed = chown(QFile::encodeName(folder).constData(), nobody, nobody) == 0 &&
                        setresuid(nobody, nobody, 0) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_changed && setresuid(0, 0, 0) != 0)
            qFatal("cannot become the administrator again");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;

    bool m_wasAdministrator = getuid() == 0;
    bool m_changed = false;
#else
    explicit OrdinaryUser(const QString& /*folder*/) {}
#endif
};

#pragma once

#include <QSettings>
#include <QTemporaryDir>

/// Settings that start empty, apart from what the test itself puts there, and are gone afterwards.
class SettingsOfItsOwn {
public:
#ifdef Q_OS_WIN
    ~SettingsOfItsOwn()
    {
        QSettings(QStringLiteral("HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat"),
                  QSettings::NativeFormat)
            .clear();
    }
#else
    SettingsOfItsOwn() { qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit()); }

private:
    QTemporaryDir m_folder;
#endif
};

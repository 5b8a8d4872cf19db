#pragma once

#include <QSettings>
#include <QTemporaryDir>

/// Settings that are empty at first, except for what the test adds, and are removed afterwards.
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

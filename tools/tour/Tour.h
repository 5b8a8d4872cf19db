#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QAction;
class QDir;
class QWidget;
class frmPrincipal;

/// Uses the program through its menus, as an operator does, and takes pictures. Finds everything by
/// its objectName.
class Tour : public QObject {
    Q_OBJECT
public:
    explicit Tour(frmPrincipal& mainWindow);

    /// Chooses Conectar and waits until the clock has shown its state; false when it did not
    /// answer.
    bool connectToClock(bool throughModem);
    /// Opens the information window, waits for the clock's date and says what it shows, a line a
    /// value; none when it stayed without values.
    QStringList readClock();
    /// The last lines of the status log.
    QStringList log() const;

    /// The main window with what is open in it.
    bool savePicture(const QString& path);
    /// One picture of every window that the menus lead to, tabs included, named after the window.
    bool savePictures(const QDir& folder);

private:
    QAction* action(const QString& name) const;
    QWidget* openForm() const;
    QString panel(int number) const;
    bool pictureOfForm(const QString& entry, const QDir& folder);
    bool picturesOfDialog(const QString& entry, const QDir& folder);

    frmPrincipal& m_mainWindow;
};

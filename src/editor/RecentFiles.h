#pragma once

#include "ClockModel.h"

#include <QList>
#include <QString>

#include <optional>

class Registry;

/// The files that were opened or saved last, newest first, each with its model and the title of its
/// sheet for the wall, neither of which is in the file itself. They are in the registry under
/// Software\Quorvex\Lurimat\Editor; what does not belong there is passed over.
class RecentFiles {
public:
    static constexpr int mostFiles = 10;

    struct File {
        /// Absolute.
        QString path;
        ClockModel model = ClockModel::Hct7200;
        QString wallTitle;

        bool operator==(const File&) const = default;
    };

    explicit RecentFiles(Registry& registry) : m_registry(registry) {}

    /// Reads them anew: another window or program may have added some.
    QList<File> files() const;
    std::optional<File> find(const QString& path) const;

    /// These return false when the registry could not be written.
    /// A file that is there already keeps its title.
    bool add(const QString& path, ClockModel model);
    bool setWallTitle(const QString& path, const QString& title);
    bool remove(const QString& path);

private:
    bool write(const QList<File>& files);

    Registry& m_registry;
};

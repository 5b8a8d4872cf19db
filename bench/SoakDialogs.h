#pragma once

#include "Dialogs.h"

/// An operator who acknowledges every box, agrees to every question, and opens the same file.
class SoakDialogs final : public Dialogs {
public:
    explicit SoakDialogs(const QString& path) : m_path(path) {}

    /// How many boxes have told something so far.
    int told() const { return m_told; }

    void tell(Icon, const QString&, const QString&) override { ++m_told; }
    bool confirm(Icon, const QString&, const QString&) override { return true; }
    std::optional<QString> askText(const QString&, const QString&) override { return {}; }
    QString openFile(const FileRequest&) override { return m_path; }
    QString saveFile(const FileRequest&) override { return {}; }

private:
    QString m_path;
    int m_told = 0;
};

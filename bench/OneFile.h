#pragma once

#include "Dialogs.h"

/// File dialogs that always choose the same file.
class OneFile final : public Dialogs {
public:
    explicit OneFile(const QString& path) : m_path(path) {}
    void tell(Icon, const QString&, const QString&) override {}
    bool confirm(Icon, const QString&, const QString&) override { return false; }
    std::optional<QString> askText(const QString&, const QString&) override { return {}; }
    QString openFile(const FileRequest&) override { return m_path; }
    QString saveFile(const FileRequest&) override { return {}; }

private:
    QString m_path;
};

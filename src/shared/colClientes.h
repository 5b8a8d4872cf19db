#pragma once

#include "DeferredProcess.h"

#include <QStringList>

#include <memory>
#include <vector>

/// One registered client of the timer service.
struct clsCliente {
    /// Ticks between two calls.
    qint16 Period = 1;
    DeferredProcess* Client = nullptr;
    /// Only active clients count ticks and are called.
    bool Active = false;
    /// Ticks since the last call.
    qint16 Ticks = 0;
};

/// The registered clients: by position, counted from 1, or by key.
class colClientes {
public:
    /// A new, inactive record under `key` (none when empty). A key that is there already adds
    /// nothing and gives nullptr.
    clsCliente* Add(qint16 period, DeferredProcess* client, const QString& key);
    /// nullptr when there is no such position or key.
    clsCliente* Item(int position);
    clsCliente* Item(const QString& key);
    int Count() const { return static_cast<int>(m_records.size()); }
    void Remove(int position);
    void Remove(const QString& key);

    /// The enumerator: the records in the order of their positions.
    auto begin() const { return m_records.begin(); }
    auto end() const { return m_records.end(); }

private:
    /// 1-based; 0 when there is none.
    int positionOf(const QString& key) const;

    /// Records keep their address while others come and go, as they do inside a client's call.
    std::vector<std::unique_ptr<clsCliente>> m_records;
    QStringList m_keys;
};

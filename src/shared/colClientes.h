#pragma once

#include "DeferredProcess.h"

#include <QStringList>

#include <memory>
#include <vector>

/// One registered client of the timer service.
struct clsCliente {
    /// Idle ticks (1 ms) from one call to the next.
    qint16 Period = 1;
    DeferredProcess* Client = nullptr;
    /// Only active clients count ticks and are called.
    bool Active = false;
    /// Idle ticks since the last call.
    qint16 Ticks = 0;
};

/// The registered clients, found by position (counted from 1) or by key.
class colClientes {
public:
    /// Adds an inactive record under `key`; an empty key is no key. Returns nullptr, and adds
    /// nothing, when the key exists already.
    clsCliente* Add(qint16 period, DeferredProcess* client, const QString& key);
    /// nullptr when there is no such position or key.
    clsCliente* Item(int position);
    clsCliente* Item(const QString& key);
    int Count() const { return static_cast<int>(m_records.size()); }
    void Remove(int position);
    void Remove(const QString& key);

    /// The records in the order of their positions.
    auto begin() const { return m_records.begin(); }
    auto end() const { return m_records.end(); }

private:
    /// 1-based; 0 when there is none.
    int positionOf(const QString& key) const;

    /// Pointers, so that a record keeps its address while a client's call adds or removes others.
    std::vector<std::unique_ptr<clsCliente>> m_records;
    QStringList m_keys;
};

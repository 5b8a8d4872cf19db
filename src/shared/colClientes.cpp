#include "colClientes.h"

clsCliente* colClientes::Add(qint16 period, DeferredProcess* client, const QString& key)
{
    if (positionOf(key) != 0)
        return nullptr;
    auto record = std::make_unique<clsCliente>();
    record->Period = period;
    record->Client = client;
    m_keys.append(key);
    return m_records.emplace_back(std::move(record)).get();
}

clsCliente* colClientes::Item(int position)
{
    if (position < 1 || position > Count())
        return nullptr;
    return m_records[static_cast<std::size_t>(position - 1)].get();
}

clsCliente* colClientes::Item(const QString& key) { return Item(positionOf(key)); }

void colClientes::Remove(int position)
{
    if (position < 1 || position > Count())
        return;
    m_records.erase(m_records.begin() + (position - 1));
    m_keys.removeAt(position - 1);
}

void colClientes::Remove(const QString& key) { Remove(positionOf(key)); }

int colClientes::positionOf(const QString& key) const
{
    return key.isEmpty() ? 0 : static_cast<int>(m_keys.indexOf(key)) + 1;
}

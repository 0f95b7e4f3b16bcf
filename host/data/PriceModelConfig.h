#pragma once

#include <QMap>
#include <QVariant>

// Pricing-model configuration: numbered items (2 the other-items template, 5 the fees
// template, 25 the current page name, 26 the hidden pages, ...).
class PriceModelConfig
{
public:
    virtual ~PriceModelConfig() = default;
    // The kind of object configured: 5001 a construction project's pricing model.
    virtual int objectType() const { return 0; }
    QVariant getItem(int id) const { return m_items.value(id); }
    void setItem(int id, const QVariant& value) { m_items.insert(id, value); }
    const QMap<int, QVariant>& items() const { return m_items; }

private:
    QMap<int, QVariant> m_items;
};

// The configuration of one construction works (a unit project or the project root).
class ConfigOfConstruction : public PriceModelConfig
{
public:
    static constexpr int ObjectType = 5001;
    int objectType() const override { return ObjectType; }
};

#include "ZgClZsItem.h"

#include "ZgjClHzTable.h"

ZgClZsItem::ZgClZsItem(int id, int parentId, int type)
    : m_id(id), m_parentId(parentId), m_type(type)
{
}

ZgClZsItem::~ZgClZsItem()
{
    delete m_material;
}

void ZgClZsItem::SetZgjClHzItem(ZgjClHzItem* material)
{
    if (material == m_material)
        return;
    delete m_material;
    m_material = material;
}

QString ZgClZsItem::GetOwnZbBm() const
{
    return m_material ? m_material->getValue(2).toString().trimmed() : QString();
}

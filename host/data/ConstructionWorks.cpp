#include "ConstructionWorks.h"

#include "RURecordControl.h"

void ConstructionWorks::setXtBl(int id, const QVariant& value)
{
    const QVariant old = m_xtBl.value(id);
    auto assign = [this, id](const QVariant& v) {
        if (v.isValid())
            m_xtBl.insert(id, v);
        else
            m_xtBl.remove(id);
    };
    if (getOwner())
        RURecordControl::GetInstance()->RecordChange([assign, old] { assign(old); },
                                                     [assign, value] { assign(value); });
    assign(value);
}

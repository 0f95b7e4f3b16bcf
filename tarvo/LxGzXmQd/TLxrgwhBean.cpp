#include "TLxrgwhBean.h"

#include <QJsonDocument>

QString TLxrgwhBean::AsJson() const
{
    return QString::fromUtf8(QJsonDocument(ToJson()).toJson(QJsonDocument::Compact));
}

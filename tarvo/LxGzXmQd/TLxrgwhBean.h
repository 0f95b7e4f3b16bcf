#pragma once

#include <QJsonObject>
#include <QString>
#include <QVariantMap>

// One row of the maintenance dialogs: a store row (FID, trade, price, remark) or a trade of
// the trade list (name, sequence number, used mark). All values are text.
class TLxrgwhBean
{
public:
    void setValue(const QString& key, const QString& value) { m_values.insert(key, value); }
    QString value(const QString& key) const { return m_values.value(key).toString(); }

    void SetFID(const QString& v) { setValue(QStringLiteral("FID"), v); }
    QString GetFID() const { return value(QStringLiteral("FID")); }
    void SetDataGz(const QString& v) { setValue(QStringLiteral("gz"), v); }
    QString GetDataGz() const { return value(QStringLiteral("gz")); }
    void SetDataDj(const QString& v) { setValue(QStringLiteral("dj"), v); }
    QString GetDataDj() const { return value(QStringLiteral("dj")); }
    void SetRemarke(const QString& v) { setValue(QStringLiteral("bz"), v); }
    QString GetRemarke() const { return value(QStringLiteral("bz")); }
    void SetDat(const QString& v) { setValue(QStringLiteral("dat"), v); }
    QString GetDat() const { return value(QStringLiteral("dat")); }
    void SetXh(const QString& v) { setValue(QStringLiteral("xh"), v); }
    QString GetXh() const { return value(QStringLiteral("xh")); }
    void SetSfsy(const QString& v) { setValue(QStringLiteral("sfsy"), v); }
    QString GetSfsy() const { return value(QStringLiteral("sfsy")); }

    QJsonObject ToJson() const { return QJsonObject::fromVariantMap(m_values); }
    QString AsJson() const;

private:
    QVariantMap m_values;
};

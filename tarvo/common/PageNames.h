#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The module's pages in one place: each page's service name and the host's page (tab) name,
// in tab order.
namespace PageNames {

inline const QString QtXmQdService = QStringLiteral("QtXmQdJJjbService");
inline const QString ZbrClGzfQdService = QStringLiteral("ZbrClGzfQdService");
inline const QString LxGzXmQdService = QStringLiteral("LxGzXmQdJJjbService");
inline const QString GfQdService = QStringLiteral("GfQdService");
inline const QString SjCqXPsClService = QStringLiteral("XSjCqPsDClQdJJgbService");
inline const QString ZgClQdService = QStringLiteral("ZgClQdService");

struct Page
{
    QString service;
    QString name;
};

inline const QList<Page>& pages()
{
    static const QList<Page> list = {
        {QtXmQdService, QStringLiteral("其他项目清单")},
        {ZbrClGzfQdService, QStringLiteral("招标人材料购置费清单")},
        {LxGzXmQdService, QStringLiteral("零星工作项目人工单价清单")},
        {GfQdService, QStringLiteral("规费税金清单")},
        {SjCqXPsClService, QStringLiteral("需评审的材料清单")},
        {ZgClQdService, QStringLiteral("暂估材料(工程设备)清单")},
    };
    return list;
}

inline QStringList pageOrder()
{
    QStringList names;
    for (const Page& page : pages())
        names << page.name;
    return names;
}

inline QStringList serviceOrder()
{
    QStringList services;
    for (const Page& page : pages())
        services << page.service;
    return services;
}

} // namespace PageNames

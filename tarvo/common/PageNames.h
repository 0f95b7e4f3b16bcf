#pragma once

#include <QString>
#include <QStringList>

// The host's page names (tab names) and the module's page-service names, in tab order.
namespace PageNames {

inline const QString QtXmQdPN = QStringLiteral("其他项目清单");
inline const QString ZbrClGzfQdPN = QStringLiteral("招标人材料购置费清单");
inline const QString LxGzXmRgDjQdPN = QStringLiteral("零星工作项目人工单价清单");
inline const QString GfSjQdPN = QStringLiteral("规费税金清单");
inline const QString XpsClQdPN = QStringLiteral("需评审的材料清单");
inline const QString ZgClGcSbQdPN = QStringLiteral("暂估材料(工程设备)清单");

inline const QString QtXmQdService = QStringLiteral("QtXmQdJJjbService");
inline const QString ZbrClGzfQdService = QStringLiteral("ZbrClGzfQdService");
inline const QString LxGzXmQdService = QStringLiteral("LxGzXmQdJJjbService");
inline const QString GfQdService = QStringLiteral("GfQdService");
inline const QString SjCqXPsClService = QStringLiteral("XSjCqPsDClQdJJgbService");
inline const QString ZgClQdService = QStringLiteral("ZgClQdService");

inline QStringList pageOrder()
{
    return {QtXmQdPN, ZbrClGzfQdPN, LxGzXmRgDjQdPN, GfSjQdPN, XpsClQdPN, ZgClGcSbQdPN};
}

inline QStringList serviceOrder()
{
    return {QtXmQdService, ZbrClGzfQdService, LxGzXmQdService,
            GfQdService,   SjCqXPsClService,  ZgClQdService};
}

} // namespace PageNames

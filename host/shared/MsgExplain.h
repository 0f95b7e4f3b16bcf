#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

// Payload types of host messages.
namespace MsgExplain {

// Message 49: make the named page tab visible and current.
struct ToChangeActivePageInfo
{
    QString strPageName;
};

// Message 47: the state of a ribbon item (0 enabled, 1 enabled, 2 checked, 3 disabled),
// or with type 3 the text of a combo item.
struct ToChangeMenuItemInfo
{
    QString strText;
    int nState = 0;
    int nType = 0;
    QVariant value;
};

// Message 5: a ribbon combo changed its text.
struct MenuComboInfo
{
    QString strItem;
    QString strText;
};

void registerMetaTypes();

} // namespace MsgExplain

Q_DECLARE_METATYPE(MsgExplain::ToChangeActivePageInfo)
Q_DECLARE_METATYPE(MsgExplain::ToChangeMenuItemInfo)
Q_DECLARE_METATYPE(MsgExplain::MenuComboInfo)

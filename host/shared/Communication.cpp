#include "Communication.h"
#include "MsgExplain.h"

Communication* Communication::GetInstance()
{
    static Communication* instance = new Communication;
    return instance;
}

Communication::Communication()
{
    MsgExplain::registerMetaTypes();
}

void Communication::SendMsg(int target, int msgId, const QVariant& payload)
{
    emit signalMsg(target, msgId, payload);
}

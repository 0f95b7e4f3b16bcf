#include "JsMsBusiness.h"

#include "ProjectWorks.h"

bool JsMsBusiness::IsVATProject(ProjectWorks* works)
{
    return works &&
           works->GetPriceModelConfig()->getItem(6).toString() != QStringLiteral("简易计税");
}

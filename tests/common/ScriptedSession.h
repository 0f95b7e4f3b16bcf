#pragma once

#include "BusinessFaultInjection.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "RURecordControl.h"

// A dialog test's run: nothing modal is shown, no answer, hook, report or fault is left from
// the run before, and the undo history goes with the project.
inline void beginScriptedSession()
{
    InteractionSeam::setScripted(true);
    InteractionSeam::clear();
    InteractionSeam::setModalHook(nullptr);
    ClearExceptionReports();
}

inline void endScriptedSession()
{
    InteractionSeam::setModalHook(nullptr);
    BusinessFaultInjection::clear();
    RURecordControl::GetInstance()->ForgetHistory();
}

#include "zBaseFrame.h"

zBaseFrame::zBaseFrame(QWidget* parent) : QFrame(parent)
{
    setFrameShape(QFrame::NoFrame);
}

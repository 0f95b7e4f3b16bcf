#include "pixelToPoints.h"

double pixelToPoints(double pixels, double screenFactor)
{
    if (!(screenFactor > 0))
        screenFactor = 1.0;
    return pixels * 72.0 / (96.0 * screenFactor);
}

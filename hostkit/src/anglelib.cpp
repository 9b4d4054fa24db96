// Angle units for the angle fields.
#include "anglelib.h"

#include <cmath>

void wkonst(double* angleDef, double* first, double* fullCircle)
{
    const double pi = 3.14159265358979323846;
    const double code = angleDef != nullptr && std::isfinite(*angleDef) ? std::floor(*angleDef + 0.5) : 0.0;
    double full = 360.0;
    if (code == KELHOSTKIT_ANGLE_GRADS)
        full = 400.0;
    else if (code == KELHOSTKIT_ANGLE_RADIANS)
        full = 2.0 * pi;
    if (first != nullptr)
        *first = full / (2.0 * pi);
    if (fullCircle != nullptr)
        *fullCircle = full;
}

// Angle units: the constants of the unit that an angle definition cell describes.
//
//     double def = KELHOSTKIT_ANGLE_DEGREES, perRadian = 0, full = 0;
//     wkonst(&def, &perRadian, &full);   // perRadian = 180/pi, full = 360
#pragma once
#include "hostkit.h"

// Values of the angle definition cell, rounded to the nearest whole number. Any other value
// counts as degrees.
#define KELHOSTKIT_ANGLE_DEGREES 0.0
#define KELHOSTKIT_ANGLE_GRADS 1.0
#define KELHOSTKIT_ANGLE_RADIANS 2.0

// Writes the constants of the unit in *angleDef: *first gets the units in one radian
// (180/pi, 200/pi, 1), *fullCircle the full circle (360, 400, 2 pi). *angleDef is not changed.
KELHOSTKIT_API void wkonst(double* angleDef, double* first, double* fullCircle);

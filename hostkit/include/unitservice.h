// The host's unit settings, as the expression parser reads them through the query entry.
//
//     void* p = nullptr;
//     query(KELHOSTKIT_SERVICE_UNIT_SETTINGS, &p);
//     if (p) { IKelUnitSettings* units = static_cast<IKelUnitSettings*>(p);
//              int unit = units->GetLengthUnit(); int mode = units->GetInputMode();
//              release(KELHOSTKIT_SERVICE_UNIT_SETTINGS, p); }
//
// A host that stores null (or has no such service) gets millimetres and metric input.
#pragma once

// Service number of the unit settings, asked for with the host's query entry.
#define KELHOSTKIT_SERVICE_UNIT_SETTINGS 90

// Length units as GetLengthUnit answers them. Any other value counts as millimetres.
enum eKelLengthUnit
{
    eKelUnitMillimetre = 0,
    eKelUnitCentimetre = 1,
    eKelUnitMetre = 2,
    eKelUnitInch = 3,
    eKelUnitFoot = 4
};

class IKelUnitSettings
{
public:
    // The current length unit, one of eKelLengthUnit.
    virtual int GetLengthUnit() = 0;
    // The current input mode, one of eInputMode's 0, 1, 3, 4 (algebraicparser.h). Any other
    // value counts as 0 with a metric unit and as 1 with an imperial one.
    virtual int GetInputMode() = 0;

protected:
    ~IKelUnitSettings() = default;
};

// The host's attribute sets and the layers of its sample drawing.
#include "ck_attrib.h"

namespace
{
struct SampleAttrib
{
    int layer;
    int resID;
    int value;
};

// The sample drawing: three layers (walls, doors, furniture) with their attributes.
const SampleAttrib kSampleAttribs[] = {
    {1, KX_ATTR_COLOUR, 1},     {1, KX_ATTR_LINE_TYPE, 1},  {1, KX_ATTR_LINE_WIDTH, 5},
    {1, KX_ATTR_HATCH, 12},     {1, KX_ATTR_LAYER_NUMBER, 1},
    {2, KX_ATTR_COLOUR, 4},     {2, KX_ATTR_LINE_TYPE, 2},  {2, KX_ATTR_LINE_WIDTH, 3},
    {2, KX_ATTR_LAYER_NUMBER, 2},
    {3, KX_ATTR_COLOUR, 6},     {3, KX_ATTR_PATTERN, 3},    {3, KX_ATTR_HEIGHT, 750},
    {3, KX_ATTR_LAYER_NUMBER, 3},
};
}

void CK_AttribSet::Add(const CK_Attrib& attrib)
{
    m_attribs.push_back(attrib);
}

CK_Attrib* CK_AttribSet::Find(int resID)
{
    for (CK_Attrib& attrib : m_attribs)
        if (attrib.m_nResID == resID)
            return &attrib;
    return nullptr;
}

bool GetAttrsByLayer(int layerNumber, CK_AttribSet& attribs)
{
    attribs.RemoveAll();
    for (const SampleAttrib& sample : kSampleAttribs)
        if (sample.layer == layerNumber)
            attribs.Add(CK_Attrib(sample.resID, 0, sample.value, 1));
    return attribs.GetCount() > 0;
}

bool isAttributChangeable(int resID)
{
    return resID != KX_ATTR_LAYER_NUMBER;
}

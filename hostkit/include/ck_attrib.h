// CK_Attrib, CK_AttribSet: the host's attributes of drawing elements, and the functions that
// read a layer's attributes from the host's sample drawing.
//
//     CK_AttribSet set;
//     GetAttrsByLayer(2, set);
//     if (CK_Attrib* colour = set.Find(KX_ATTR_COLOUR))
//         colour->m_nSwitched = 0;
#pragma once
#include "hostkit.h"

#include <vector>

// Attribute numbers of the sample drawing.
enum KX_AttributeNumber
{
    KX_ATTR_COLOUR = 1,
    KX_ATTR_LINE_TYPE = 2,
    KX_ATTR_LINE_WIDTH = 3,
    KX_ATTR_HATCH = 4,
    KX_ATTR_PATTERN = 5,
    KX_ATTR_HEIGHT = 6,
    KX_ATTR_LAYER_NUMBER = 7   // fixed by the layer: never changeable
};

// One attribute of an element: its number, then the deleted mark, the value and whether the
// attribute takes part in the current edit (the switch). Field order is part of the host's
// interface.
class KELHOSTKIT_API CK_Attrib
{
public:
    CK_Attrib(int resID = 0, int deleted = 0, int value = 0, int switched = 1)
        : m_nResID(resID), m_nDeleted(deleted), m_nValue(value), m_nSwitched(switched)
    {
    }
    int m_nResID;
    int m_nDeleted;
    int m_nValue;
    int m_nSwitched;
};

class KELHOSTKIT_API CK_AttribSet
{
public:
    void Add(const CK_Attrib& attrib);
    int GetCount() const { return static_cast<int>(m_attribs.size()); }
    CK_Attrib& GetAt(int index) { return m_attribs[static_cast<size_t>(index)]; }
    const CK_Attrib& GetAt(int index) const { return m_attribs[static_cast<size_t>(index)]; }
    // The attribute with that number, or null.
    CK_Attrib* Find(int resID);
    void RemoveAll() { m_attribs.clear(); }

private:
    std::vector<CK_Attrib> m_attribs;
};

// Replaces the contents of the set by the attributes of a layer of the sample drawing;
// false (and an empty set) for a layer the drawing does not have.
KELHOSTKIT_API bool GetAttrsByLayer(int layerNumber, CK_AttribSet& attribs);
// Whether the user may change an attribute of that number.
KELHOSTKIT_API bool isAttributChangeable(int resID);

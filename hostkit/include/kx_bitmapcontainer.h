// KX_BitmapContainer: the host's store of small images, handed out as GDI icons by number.
//
//     HICON icon = KX_BitmapContainer::instance().getGDIIcon(KX_BMP_SWITCH_ON, 1, 1);
//     images.Add(icon);
//     DestroyIcon(icon);   // the caller owns every icon it gets
#pragma once
#include "hostkit.h"

// Image numbers of the container that the library's controls use.
enum KX_BitmapId
{
    KX_BMP_SWITCH_OFF = 8538,          // empty switch box
    KX_BMP_SWITCH_ON = 8539,           // ticked switch box
    KX_BMP_LOCKED_SWITCH_OFF = 8548,   // empty switch box, greyed because it is locked
    KX_BMP_LOCKED_SWITCH_ON = 8549,    // ticked switch box, greyed because it is locked
    KX_BMP_DELETED_MARK = 14982        // red cross of a row marked for deletion
};

enum KX_BitmapSize
{
    KX_BMPSIZE_16 = 1,   // 16 by 16 pixels
    KX_BMPSIZE_24 = 2    // 24 by 24 pixels
};

class KELHOSTKIT_API KX_BitmapContainer
{
public:
    static KX_BitmapContainer& instance();

    // A new icon of the image, or null for a number the container does not hold. The size
    // selects 16 or 24 pixels; with state 0 the image is drawn greyed.
    HICON getGDIIcon(int id, int size, int state) const;
    // True when the container holds an image under that number.
    bool hasImage(int id) const;

private:
    KX_BitmapContainer() = default;
};

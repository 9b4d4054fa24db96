// The framework's classes in one include: windows, dialogs, controls, drawing, application.
#pragma once
#include "kelfw/fwdefs.h"
#include "kelfw/fwstring.h"
#include "kelfw/fwgeometry.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"
#include "kelfw/fwgdi.h"
#include "kelfw/fwdc.h"
#include "kelfw/fwimagelist.h"
#include "kelfw/fwwnd.h"
#include "kelfw/fwctrls.h"
#include "kelfw/fwdialog.h"
#include "kelfw/fwapp.h"

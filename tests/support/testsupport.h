// Helpers shared by the tests.
#pragma once
#include <windows.h>

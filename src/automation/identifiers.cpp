// Defines the identifiers that the other sources know from the header.
#include "com/com_headers.h"

#include <initguid.h>

#include "kova_drawer_man_automation.h"

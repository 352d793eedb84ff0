#pragma once
#include <windows.h> // before the others, which need its types

#include <oaidl.h>
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>
#include <unknwn.h>

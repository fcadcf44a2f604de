// The base services this project uses, under the names, signatures and values of the Windows headers, implemented over
// what Linux offers. It declares only what has a caller here and grows only when one needs it.
#pragma once

#include <debugapi.h>
#include <errhandlingapi.h>
#include <fileapi.h>
#include <handleapi.h>
#include <libloaderapi.h>
#include <minwinbase.h>
#include <minwindef.h>
#include <processenv.h>
#include <processthreadsapi.h>
#include <profileapi.h>
#include <stringapiset.h>
#include <synchapi.h>
#include <sysinfoapi.h>
#include <winbase.h>
#include <windef.h>
#include <winerror.h>
#include <winreg.h>
#include <winuser.h>

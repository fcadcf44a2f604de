// The one copy of the functions that load Vulkan at run time, with those of X11 windows.
#include <xcb/xcb.h>

#define VOLK_IMPLEMENTATION
#include <volk.h>

#include "launcher/GameLaunch/CommandLine.h"

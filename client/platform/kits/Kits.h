#pragma once

// The outside kits the application delegate talks to: the system's hooks, WeChat and the push
// service.
#include "platform/kits/ApplicationDelegate.h"
#include "platform/kits/GeTuiSdkDelegate.h"
#include "platform/kits/WXApiObject.h"

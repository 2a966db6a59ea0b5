#include "service/ApplicationState.h"

namespace {
PlainApplicationState plainState;
ApplicationState *installedState = nullptr;
} // namespace

ApplicationState &ApplicationState::shared()
{
    return installedState ? *installedState : plainState;
}

void ApplicationState::install(ApplicationState *state)
{
    installedState = state;
}

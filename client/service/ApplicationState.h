#pragma once

#include "models/Object_User.h"

#include <optional>

// What the service layer reads of the application-wide state: the signed-in user (`userLogin`,
// signed in exactly when it is set) and the seconds left of the SMS countdown. The application
// delegate provides the real one; until it is installed (and in tests) a plain holder is used.
class ApplicationState
{
public:
    virtual ~ApplicationState() = default;

    virtual std::optional<Object_User> userLogin() const = 0;
    virtual void setUserLogin(const std::optional<Object_User> &user) = 0;
    virtual int countdown() const = 0;

    // The installed state; a PlainApplicationState until someone installs another.
    static ApplicationState &shared();
    // Installs `state` (not owned); nullptr goes back to the plain holder.
    static void install(ApplicationState *state);
};

// A state that only holds its values: the default, and what tests set up.
class PlainApplicationState : public ApplicationState
{
public:
    std::optional<Object_User> userLogin() const override { return m_user; }
    void setUserLogin(const std::optional<Object_User> &user) override { m_user = user; }
    int countdown() const override { return m_countdown; }
    void setCountdown(int seconds) { m_countdown = seconds; }

private:
    std::optional<Object_User> m_user;
    int m_countdown = 60;
};

// Scripts of user input in a host's windows, run on a thread beside the host's.
#pragma once

#include "tests/support/HostWindow.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

// Runs a loop until the condition holds; false after half a minute.
inline bool turnUntil(const std::function<bool()>& condition, const std::function<void()>& turn)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (; !condition(); turn())
        if (std::chrono::steady_clock::now() > end)
            return false;
    return true;
}

// The actions of a script. Two clicks on one place are spaced so that they are no double click.
class User {
public:
    using Button = userinput::Button;

    // Runs the script while the host's loop goes on.
    static void act(const std::function<void(User&)>& script, const std::function<void()>& turn)
    {
        std::atomic<bool> done{false};
        std::thread thread([&] {
            User user;
            script(user);
            done = true;
        });
        while (!done)
            turn();
        thread.join();
    }

    void moveTo(Place where) { userinput::movePointer(where); }
    void press(Place where, Button which = Button::Left)
    {
        if (std::abs(where.x - lastPlace.x) < 8 && std::abs(where.y - lastPlace.y) < 8)
            std::this_thread::sleep_until(lastTime + std::chrono::milliseconds(520));
        moveTo(where);
        userinput::button(which, true);
        lastPlace = where;
        lastTime = std::chrono::steady_clock::now();
    }
    void release(Button which = Button::Left) { userinput::button(which, false); }
    void click(Place where, Button which = Button::Left)
    {
        press(where, which);
        release(which);
    }
    void drag(Place from, int dx, int dy)
    {
        constexpr int kSteps = 4;
        moveTo(from);
        pause(kEntering);
        press(from);
        for (int step = 1; step <= kSteps; ++step)
            moveTo({from.x + dx * step / kSteps, from.y + dy * step / kSteps});
        // Otherwise a slow machine may process the release before the last step.
        pause(40);
        release();
    }
    void wheel(Place where, bool up)
    {
        moveTo(where);
        userinput::wheel(up);
    }
    void tap(userinput::Key which) { userinput::tap(which); }
    void type(const std::string& text) { userinput::type(text); }
    void pause(int milliseconds)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    // False after half a minute.
    bool waitFor(const std::function<bool()>& condition)
    {
        return turnUntil(condition, [this] { pause(10); });
    }

private:
    // ms. When the pointer enters a window, Wine takes key and pointer state from the X server,
    // with a delay.
    static constexpr int kEntering = 60;

    static inline Place lastPlace{};
    static inline std::chrono::steady_clock::time_point lastTime;
};

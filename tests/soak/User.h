// The host's user interface thread: everything that a user, or the host on the user's behalf, does
// to the instances while they process audio.
#pragma once

#include "tests/soak/Slot.h"
#include "tests/soak/Watchdog.h"

#include <cstdint>
#include <memory>
#include <vector>

class User {
public:
    using Bytes = std::vector<std::uint8_t>;

    // Creates the slots; of every four instances two are twins. Throws HostError without the
    // plug-in or, for editors, without a display.
    User(Run& run, Progress& progress);

    // Some random actions, and the idle calls of this thread.
    void turn();
    // Opens an editor, widens it fully and closes it, so that system libraries have made their
    // one-time allocations for editors.
    void tryOneEditor();
    // Closes all instances, so that the library is unloaded.
    void closeAll();
    void openAll();

    // Prints how often each kind of action was done.
    void print() const;

    std::vector<std::unique_ptr<Slot>> slots;

private:
    struct Action {
        const char* name;
        std::size_t weight;
        void (User::*act)(Slot& slot);
        bool wantsEditor = false;  // only for a single instance with an open editor
        long long times = 0;
    };

    // --- At any time ---
    void automate(Slot& slot);
    void read(Slot& slot);
    void save(Slot& slot);
    void load(Slot& slot);
    void openOrCloseEditor(Slot& slot);
    void resizeEditor(Slot& slot);
    void useEditor(Slot& slot);

    // --- With the slot stopped ---
    void change(Slot& slot);
    void reopen(Slot& slot);

    void give(Slot& slot, const Bytes& state);
    void idle();

    Run& run;
    Progress& progress;
    Random random;
    std::vector<Action> actions;
    std::vector<Action*> wheel;  // each action as often as its weight
    Bytes factory;               // the state of a fresh instance
    std::vector<Bytes> saved;    // the latest few
};

// The thread of the host's user interface: everything that a user, or the host for him, does to the
// instances while they play.
#pragma once

#include "Seat.h"
#include "Watchdog.h"

#include <cstdint>
#include <memory>
#include <vector>

class User {
public:
    using Bytes = std::vector<std::uint8_t>;

    // Takes the seats, of every four instances two as twins. Throws HostError when the plug-in, or
    // a display for its editors, is not there.
    User(Run& run, Whereabouts& whereabouts);

    // Some deeds by chance, and a turn of everything that lives on this thread.
    void turn();
    // Opens an editor, makes it as wide as it gets, and closes it: what libraries of the system
    // load and keep for editors, they have from then on.
    void tryOneEditor();
    // Closes all instances, so that the library is unloaded.
    void closeAll();
    void openAll();

    // A line for each kind of deed: how often it was done.
    void print() const;

    std::vector<std::unique_ptr<Seat>> seats;

private:
    struct Action {
        const char* name;
        std::size_t weight;
        void (User::*act)(Seat& seat);
        bool wantsEditor = false;  // for a single instance that has one open
        long long times = 0;
    };

    // --- At any time ---
    void automate(Seat& seat);
    void read(Seat& seat);
    void save(Seat& seat);
    void load(Seat& seat);
    void openOrCloseEditor(Seat& seat);
    void resizeEditor(Seat& seat);
    void useEditor(Seat& seat);

    // --- With the seat stopped ---
    void loadDamaged(Seat& seat);
    void change(Seat& seat);
    void reopen(Seat& seat);

    void give(Seat& seat, const Bytes& state);
    Bytes damaged(Bytes state);
    void idle();

    Run& run;
    Whereabouts& whereabouts;
    Dice dice;
    std::vector<Action> actions;
    std::vector<Action*> wheel;  // as many of each as it weighs
    Bytes factory;               // the state of a fresh instance
    std::vector<Bytes> saved;    // the latest few
};

// The thread of the host's user interface: everything that a user, or the host for him, does to the
// instances while they play.
#pragma once

#include "EditorWindow.h"
#include "Seat.h"
#include "Watchdog.h"

#include <cstdint>
#include <memory>
#include <vector>

class User {
public:
    using Bytes = std::vector<std::uint8_t>;

    User(std::vector<std::unique_ptr<Seat>>& seats, Run& run, Whereabouts& whereabouts);
    // Closes what is open.
    ~User();

    // Some deeds by chance, and a turn of everything that lives on this thread.
    void turn();
    // Opens an editor, makes it as wide as it gets, and closes it: what libraries of the system
    // load and keep for editors, they have from then on.
    void tryOneEditor();
    // Closes all instances, so that the library is unloaded.
    void closeAll();
    void openAll();

private:
    struct Editor {
        std::unique_ptr<EditorWindow> window;
        EditorSize size;
    };
    struct Choice {
        const char* what;
        int weight;
        void (User::*act)(Seat& seat);
        bool wantsEditors;
    };
    static const std::vector<Choice>& choices();
    const Choice& choose();

    // --- At any time ---
    void automate(Seat& seat);
    void readEverything(Seat& seat);
    void rename(Seat& seat);
    void save(Seat& seat);
    void choosePreset(Seat& seat);

    // --- With the seat stopped ---
    void load(Seat& seat);
    void loadDamaged(Seat& seat);
    void mains(Seat& seat);
    void rate(Seat& seat);
    void blockSize(Seat& seat);
    void arrangement(Seat& seat);
    void reopen(Seat& seat);

    // --- Editors ---
    void openOrCloseEditor(Seat& seat);
    void resizeEditor(Seat& seat);
    void moveMouse(Seat& seat);
    void openEditor(Seat& seat);
    void closeEditor(Seat& seat);
    void follow(Seat& seat);

    void give(Seat& seat, const Bytes& state);
    bool givenWhilePlaying(Seat& seat, const Bytes& state);
    Bytes damaged(const Bytes& state);
    void checkValues(Seat& seat);
    void idle();

    std::vector<std::unique_ptr<Seat>>& seats;
    Run& run;
    Whereabouts& whereabouts;
    Dice dice;
    std::vector<Editor> editors;  // by seat
    Bytes factory;                // the state of a fresh instance
    std::vector<Bytes> saved;     // the latest few
};

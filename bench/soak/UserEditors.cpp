// Editors: opened, used, resized, closed.
#include "User.h"

#include <algorithm>

namespace {

// From here down the editor has the row of the presets, whose menu and file dialogs wait for
// somebody to answer.
constexpr int kSafeHeight = 450;

constexpr std::size_t kMostEditors = 4;

}  // namespace

void User::openEditor(Seat& seat)
{
    Editor& editor = editors[static_cast<std::size_t>(seat.number)];
    host::NativePlugin& plugin = *seat.plugins.front();
    plugin.clearReports();
    editor.size = editorSize(plugin);
    editor.window = openEditorWindow(plugin, "ZKR T46, " + seat.name());
    run.tally.add(Deed::EditorOpened);
}

void User::closeEditor(Seat& seat)
{
    Editor& editor = editors[static_cast<std::size_t>(seat.number)];
    if (!editor.window)
        return;
    seat.touch();
    seat.plugins.front()->dispatch(effEditClose);
    editor.window.reset();
    seat.touch();
}

// The window follows the editor's wish.
void User::follow(Seat& seat)
{
    Editor& editor = editors[static_cast<std::size_t>(seat.number)];
    for (const auto& plugin : seat.plugins) {
        const host::HostReports reports = plugin->reports();
        plugin->clearReports();
        if (!editor.window || reports.windowSizes == 0 || plugin != seat.plugins.front())
            continue;
        editor.size = {reports.windowWidth, reports.windowHeight};
        editor.window->resize(editor.size.width, editor.size.height);
        run.tally.add(Deed::EditorResized);
    }
    if (editor.window)
        editor.window->turn();
}

void User::openOrCloseEditor(Seat& seat)
{
    const auto open = static_cast<std::size_t>(std::count_if(
        editors.begin(), editors.end(), [](const Editor& each) { return each.window != nullptr; }));
    if (editors[static_cast<std::size_t>(seat.number)].window)
        closeEditor(seat);
    else if (open < kMostEditors)
        openEditor(seat);
}

// As automation of the two switches does it.
void User::resizeEditor(Seat& seat)
{
    if (seat.twins || !editors[static_cast<std::size_t>(seat.number)].window)
        return;
    seat.touch();
    seat.plugins.front()->setParameter(dice.oneIn(2) ? kQB11 : k2x, dice.oneIn(2) ? 1.0f : 0.0f);
    seat.touch();
    run.tally.add(Deed::AutomationOfUser);
}

// A drag, a click or a turn of the wheel somewhere over the controls.
void User::moveMouse(Seat& seat)
{
    const Editor& editor = editors[static_cast<std::size_t>(seat.number)];
    if (seat.twins || !editor.window)
        return;
    seat.touch();
    EditorWindow& window = *editor.window;
    const int x = dice.below(editor.size.width);
    int y = dice.below(kSafeHeight);
    window.moveMouse(x, y);
    if (dice.oneIn(3)) {
        window.turnWheel(x, y, dice.oneIn(2));
    } else {
        window.pressButton(x, y, true);
        for (int moves = dice.below(4); moves > 0; --moves) {
            y += dice.between(-20, 20);
            window.moveMouse(x, y);
            run.tally.add(Deed::MouseEvent);
        }
        window.pressButton(x, y, false);
    }
    run.tally.add(Deed::MouseEvent, 2);
    // The plug-in hears of it on this thread.
    seat.plugins.front()->idle();
    seat.touch();
}

void User::tryOneEditor()
{
    constexpr int kTurns = 120;
    // The last seat is a single one wherever there is one at all.
    Seat& seat = *seats.back();
    openEditor(seat);
    for (int turns = 0; turns < kTurns; ++turns) {
        if (turns % 20 == 0)
            resizeEditor(seat);
        idle();
    }
    closeEditor(seat);
}

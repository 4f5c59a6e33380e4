// The per-user store of the system that the tests run on, in a place of its own.
#pragma once

#include "SettingsStore.h"

#include <memory>
#include <string>

// A place, in ASCII, that no store has used yet: a folder, or a key of the registry.
std::string newPlace();
std::unique_ptr<platform::SettingsStore> openStore(const std::string& place);
// Ends the place with all that is in it.
void discardPlace(const std::string& place);
// How many entries of any kind there are in the place.
std::size_t countEntries(const std::string& place);

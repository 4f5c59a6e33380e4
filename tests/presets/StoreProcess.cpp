// Another process that uses a store: what the store's tests start beside themselves.
//
//   store_process PLACE write NAME LETTER SIZE ROUNDS    that letter, so many times over
//   store_process PLACE remove NAME
#include "TestStore.h"

#include <cstdlib>

int main(int argc, char** argv)
{
    if (argc != 4 && argc != 7)
        return 2;
    SystemStore store = openStore(argv[1]);
    if (argc == 4) {
        store.remove(argv[3]);
        return 0;
    }
    const std::string letters(static_cast<std::size_t>(std::atoi(argv[5])), *argv[4]);
    for (int round = std::atoi(argv[6]); round > 0; --round)
        store.write(argv[3], {letters.begin(), letters.end()});
    return 0;
}

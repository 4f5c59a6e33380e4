// ProcessGate: mutual exclusion of audio blocks and a host's setup calls.
#pragma once

#include <atomic>
#include <thread>

namespace Steinberg {
namespace Vst {

// Hosts may change rate, block size, buses or activation only between blocks, but some do so while
// their audio thread is processing one. A setup then waits for the end of the block; a block that
// starts during a setup does not wait and must output silence.
class ProcessGate {
public:
    // Guards a block from construction to destruction. Never waits. One block at a time.
    class Block {
    public:
        explicit Block(ProcessGate& gate) : gate(gate)
        {
            State free = State::Free;
            admitted =
                gate.state.compare_exchange_strong(free, State::Block, std::memory_order_acquire);
        }
        ~Block()
        {
            if (admitted)
                gate.state.store(State::Free, std::memory_order_release);
        }
        Block(const Block&) = delete;
        Block& operator=(const Block&) = delete;

        // False: a setup is running, and the block must not use anything that it changes.
        explicit operator bool() const { return admitted; }

    private:
        ProcessGate& gate;
        bool admitted;
    };

    // Guards a setup. Waits for a running block and for setups of other threads; recursive on its
    // own thread.
    class Setup {
    public:
        explicit Setup(ProcessGate& gate) : gate(gate)
        {
            const std::thread::id caller = std::this_thread::get_id();
            if (gate.setupThread != caller) {
                State free = State::Free;
                while (!gate.state.compare_exchange_weak(free, State::Setup,
                                                         std::memory_order_acquire)) {
                    free = State::Free;
                    std::this_thread::yield();
                }
                gate.setupThread = caller;
            }
            ++gate.depth;
        }
        ~Setup()
        {
            if (--gate.depth > 0)
                return;
            gate.setupThread = std::thread::id();
            gate.state.store(State::Free, std::memory_order_release);
        }
        Setup(const Setup&) = delete;
        Setup& operator=(const Setup&) = delete;

    private:
        ProcessGate& gate;
    };

private:
    enum class State { Free, Block, Setup };

    std::atomic<State> state{State::Free};
    std::atomic<std::thread::id> setupThread{std::thread::id()};
    int depth = 0;  // recursion depth of the running setup
};

}  // namespace Vst
}  // namespace Steinberg

// A misbehaving host and its user: one input is a sequence of VST 2 calls in any order and with any
// numbers that keep to the interface's contract (a pointer leads to a buffer of the size that its
// operation requires, or is null; channels are as long as the block), and of what the user does in
// the editor's window. Buffers have the smallest permitted size, so that the sanitizer sees the
// first byte beyond. The window is in memory, and its timers run by calls.
#include "editor/EditorBitmap.h"
#include "shell/EntryPoints.h"
#include "tests/fuzz/Finding.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Vst2Rooms.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/offscreen/manualclock.h"
#include "vstgui/platform/offscreen/offscreenhost.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace {

// Reads numbers from an input; zeros after its end.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : next(data), left(size) { }

    bool empty() const { return left == 0; }

    std::vector<std::uint8_t> block(std::size_t count)
    {
        count = std::min(left, count);
        const std::uint8_t* const first = next;
        next += count;
        left -= count;
        return {first, next};
    }
    template <typename Number>
    Number take()
    {
        std::vector<std::uint8_t> bytes = block(sizeof(Number));
        bytes.resize(sizeof(Number));
        Number number{};
        std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    std::uint8_t byte() { return take<std::uint8_t>(); }

private:
    const std::uint8_t* next;
    std::size_t left;
};

constexpr VstInt32 kParameters = 58;
constexpr VstIntPtr kChunkSize = 16 + 48625;

// What all runs share: the user's files, the time of the editors' timers, and the decoded bitmaps.
struct Surroundings {
    Surroundings()
    {
        // Without the user's own settings, and without a manual, which would be opened.
        setenv("XDG_DATA_HOME", "/dev/null", 1);
        setenv("XDG_DATA_DIRS", "/dev/null", 1);
        const auto write = [](const std::string& path, const handmade::Bytes& bytes) {
            writeContent(path, {bytes.begin(), bytes.end()});
        };
        write(files[0], handmade::goodBank(1, 7));
        write(files[1], handmade::goodPreset(1));
    }

    TemporaryFolder folder;
    // The last one can be neither read nor written.
    const std::string files[3] = {folder / "good.zkb", folder / "good.zkr", "/dev/null/any.zkb"};
    VSTGUI::ManualClock clock;
    // Never destroyed: at exit the bitmaps themselves are, in no particular order.
    const BitmapUser* const bitmaps = new BitmapUser;
};

Surroundings& surroundings()
{
    static Surroundings all;
    return all;
}

void requireValue(float value)
{
    require(value >= 0.0f && value <= 1.0f, "a value outside 0 to 1");
}

class Host {
public:
    explicit Host(Bytes& input) : bytes(input), manners(bytes.byte())
    {
        for (auto& window : windows)
            answerDialogs(window.emplace());
        current = this;
    }
    ~Host()
    {
        // Hosts destroy the window before or after the effect, with the editor open or closed.
        if (manners & kWindowFirst)
            for (auto& window : windows)
                window.reset();
        current = nullptr;
        require(dispatch(effClose) == 1, "the effect did not close");
    }

    void callSomething()
    {
        const std::uint8_t choice = bytes.byte() % 16;
        switch (choice) {
        case 3: {
            const VstInt32 index = someIndex();
            set(index, bytes.take<float>());
            break;
        }
        case 4:
            requireValue(get(someIndex()));
            break;
        case 5:
            if (blocks++ < kMaxBlocks)
                process();
            break;
        case 6:
            restoreChanged();
            break;
        case 7:
            dispatch(effEditIdle);
            break;
        case 8:
            openEditor();
            break;
        case 9:
        case 10:
        case 11:
        case 12:
        case 13:
        case 14:
            useEditor(choice - 9);
            break;
        case 15:
            surroundings().clock.advance(10u * bytes.byte());
            break;
        default:
            callOperation();
            break;
        }
    }

    // After any calls the effect must be consistent, and its saved state must load again.
    void requireSound()
    {
        const AEffect& raw = *effect;
        require(raw.numParams == kParameters && raw.numPrograms == 1, "wrong counts");
        require(raw.numInputs == 1 || raw.numInputs == 2, "inputs neither mono nor stereo");
        require(raw.numOutputs == 1 || raw.numOutputs == 2, "outputs neither mono nor stereo");
        require(raw.initialDelay == 0 || raw.initialDelay == 96, "a latency other than 0 or 96");
        for (VstInt32 i = 0; i < kParameters; ++i)
            requireValue(get(i));

        requireRect();
        const std::vector<std::uint8_t> state = save();
        load(state);
        require(save() == state, "a saved state changes when it is loaded and saved again");
    }

private:
    // Bits of the first byte of an input.
    static constexpr int kCallsBack = 1, kRefusesSizes = 2, kClosesInSizeWindow = 4,
                         kWindowFirst = 8;
    // Of what takes long, a run has only a few.
    static constexpr int kMaxBlocks = 6, kMaxOpenings = 4, kMaxPictures = 2, kMaxInnerSaves = 2;
    static constexpr VstInt32 kMaxFrames = 200, kMaxAnnounced = 8192;

    VstInt32 someIndex()
    {
        const std::uint8_t small = bytes.byte();
        return small < 224 ? small % 64 - 2 : bytes.take<VstInt32>();
    }

    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) const
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    float get(VstInt32 index) const { return effect->getParameter(effect, index); }
    void set(VstInt32 index, float value) const { effect->setParameter(effect, index, value); }

    std::vector<std::uint8_t> save() const
    {
        void* data = nullptr;
        require(dispatch(effGetChunk, 0, 0, &data) == kChunkSize && data,
                "a chunk of the wrong size");
        const auto* first = static_cast<const std::uint8_t*>(data);
        return {first, first + kChunkSize};
    }
    // From memory exactly as long as the state.
    void load(std::vector<std::uint8_t> state) const
    {
        dispatch(effSetChunk, 0, static_cast<VstIntPtr>(state.size()), state.data());
    }

    void restoreChanged()
    {
        std::vector<std::uint8_t> state = save();
        for (int changes = bytes.byte() % 4; changes > 0; --changes)
            state[bytes.take<std::uint16_t>() % state.size()] = bytes.byte();
        if (bytes.byte() & 1)
            state.resize(bytes.take<std::uint16_t>() % state.size());
        load(state);
    }

    // An operation with its arguments, or with some missing, and any numbers.
    void callOperation()
    {
        const VstInt32 opcode = bytes.byte() % 103 - 2;
        const std::uint8_t how = bytes.byte();
        const VstInt32 index = someIndex();
        const auto call = [&](VstIntPtr value, void* ptr, float opt = 0.0f) {
            return dispatch(opcode, index, value, how & 2 ? nullptr : ptr, opt);
        };
        switch (opcode) {
        case effClose:     // called at the end
        case effEditOpen:  // see openEditor
            break;
        case effSetSampleRate:
            call(0, nullptr, someRate(how));
            break;
        case effSetBlockSize: {
            // Sizes that are refused, and small ones, whose buffers are quick to clear.
            auto frames = how & 1 ? bytes.take<VstIntPtr>() : bytes.take<std::uint16_t>();
            if (frames > kMaxAnnounced && frames <= 1 << 20)
                frames %= kMaxAnnounced;
            call(frames, nullptr);
            break;
        }
        case effSetChunk: {
            std::vector<std::uint8_t> state = bytes.block(bytes.byte());
            const auto size = static_cast<VstIntPtr>(state.size());
            call(how & 1 ? -bytes.take<std::uint16_t>() : size, state.data());
            break;
        }
        case effSetProgramName:
        case effString2Parameter:
        case effCanDo: {
            std::vector<std::uint8_t> text = bytes.block(bytes.byte() % 64);
            text.push_back(0);
            text.shrink_to_fit();
            call(bytes.take<VstIntPtr>(), text.data());
            break;
        }
        case effSetSpeakerArrangement: {
            VstSpeakerArrangement arrangements[2] = {};
            for (VstSpeakerArrangement& each : arrangements) {
                const std::uint8_t type = bytes.byte();
                each.type = type < 240 ? type % 4 - 1 : bytes.take<VstInt32>();
                each.numChannels = bytes.take<std::int8_t>();
            }
            call(how & 1 ? 0 : reinterpret_cast<VstIntPtr>(&arrangements[0]), &arrangements[1]);
            break;
        }
        case effGetSpeakerArrangement:
            requireArrangements(!(how & 1), !(how & 2));
            break;
        default: {
            std::vector<char> room(roomOf(opcode));
            const auto value = bytes.take<VstIntPtr>();
            call(value, room.data(), bytes.take<float>());
            break;
        }
        }
    }

    void requireArrangements(bool wantsInput, bool wantsOutput)
    {
        VstSpeakerArrangement *input = nullptr, *output = nullptr;
        if (dispatch(effGetSpeakerArrangement, 0,
                     wantsInput ? reinterpret_cast<VstIntPtr>(&input) : 0,
                     wantsOutput ? &output : nullptr))
            require(input->numChannels == effect->numInputs
                        && output->numChannels == effect->numOutputs,
                    "arrangements that differ from the counts");
    }

    // In one of two windows, also while it is open already.
    void openEditor()
    {
        const std::uint8_t which = bytes.byte();
        auto& window = windows[which & 1];
        if (++openings > kMaxOpenings || (window && window->isOpen()))
            return;
        const bool opened = dispatch(effEditOpen, 0, 0, which & 2 ? nullptr : &*window) != 0;
        // Drawing the whole editor takes as long as all the rest of a run; mostly only what changes
        // after the opening is drawn.
        if ((which & 60) != 60)
            window->clearInvalidRects();
        // A host that closes the editor while it is resized may see that it did not open.
        require(opened == !(which & 2) || manners & kClosesInSizeWindow, "the editor did not open");
    }

    void requireRect()
    {
        ERect* rect = nullptr;
        require(dispatch(effEditGetRect, 0, 0, &rect) == 1 && rect, "no size of the editor");
        require(rect->left == 0 && rect->top == 0 && rect->right > 0 && rect->bottom == 505,
                "an editor of the wrong size");
        for (const auto& window : windows)
            if (window && window->isOpen())
                require(window->frameSize() == VSTGUI::CPoint(rect->right, rect->bottom),
                        "a window with another size than the editor's");
    }

    VSTGUI::CPoint somePlace()
    {
        const auto x = bytes.take<std::uint16_t>() % 900, y = bytes.take<std::uint16_t>() % 510;
        return VSTGUI::CPoint(x - 3, y - 3);
    }
    int someButtons()
    {
        using namespace VSTGUI;
        constexpr int kMeanings[] = {kRButton, kShift, kControl, kAlt, kDoubleClick, kMButton};
        const std::uint8_t bits = bytes.byte();
        int buttons = bits & 1 ? 0 : kLButton;
        for (int i = 0; i < 6; ++i)
            buttons |= bits & 2 << i ? kMeanings[i] : 0;
        return buttons;
    }

    // The user, in the window that shows the editor, if there is one.
    void useEditor(int action)
    {
        const auto window = std::find_if(std::begin(windows), std::end(windows),
                                         [](const auto& each) { return each && each->isOpen(); });
        if (window == std::end(windows))
            return;
        VSTGUI::OffscreenHost& screen = **window;
        switch (action) {
        case 0:
        case 1: {
            const VSTGUI::CPoint where = somePlace();
            const int buttons = someButtons();
            screen.mouseMove(where);
            screen.mouseDown(where, buttons);
            if (action == 1)
                screen.mouseMove(somePlace(), buttons);
            bytes.byte() & 1 ? screen.mouseCancel() : void(screen.mouseUp(where, buttons));
            break;
        }
        case 2: {
            const VSTGUI::CPoint where = somePlace();
            const std::uint8_t notches = bytes.byte();
            screen.wheel(
                where, notches < 250 ? static_cast<float>(notches) - 125.0f : bytes.take<float>(),
                someButtons(), notches & 1 ? VSTGUI::kMouseWheelAxisX : VSTGUI::kMouseWheelAxisY);
            break;
        }
        case 3:
            screen.mouseMove(somePlace(), someButtons());
            if (bytes.byte() & 1)
                screen.mouseExit(somePlace());
            break;
        case 4:
            typeName(screen);
            break;
        default:
            screen.activate(bytes.byte() & 1);
            if (pictures++ < kMaxPictures)
                screen.repaint();
            break;
        }
    }

    void typeName(VSTGUI::OffscreenHost& screen)
    {
        const std::uint8_t end = bytes.byte();
        std::vector<std::uint8_t> text = bytes.block(bytes.byte() % 64);
        text.push_back(0);
        screen.typeText(reinterpret_cast<const char*>(text.data()));
        if (end & 1)
            screen.pressReturnInTextBox();
        if (end & 2)
            screen.pressEscapeInTextBox();
    }

    // Before the user answers, the host may close the editor.
    void answerDialogs(VSTGUI::OffscreenHost& screen)
    {
        screen.onMenu = [this](VSTGUI::COptionMenu& menu) {
            const std::uint8_t answer = someAnswer();
            return answer % 2 ? answer / 2 % menu.getNbEntries() : -1;
        };
        screen.onFileDialog = [this](const VSTGUI::FileDialogRequest& request) {
            const std::uint8_t answer = someAnswer() % 4;
            const auto& files = surroundings().files;
            if (answer == 3)
                return std::vector<std::string>();
            const bool isSaving = request.kind == VSTGUI::FileDialogRequest::Kind::saveFile;
            return std::vector<std::string>{files[isSaving ? 2 : answer]};
        };
        screen.onMessage = [this](const std::string&, const std::string&) { someAnswer(); };
    }
    std::uint8_t someAnswer()
    {
        const std::uint8_t answer = bytes.byte();
        if (answer >= 240)
            dispatch(effEditClose);
        return answer;
    }

    float someRate(std::uint8_t how)
    {
        constexpr float kRates[] = {44100.0f, 48000.0f, 88200.0f, 96000.0f, 176400.0f, 192000.0f};
        if (how & 1)
            return kRates[how / 2 % 6];
        const auto rate = bytes.take<float>();
        moderate = moderate && !(rate > 0.0f && rate < 1e7f);
        return rate;
    }

    // One block with channels that may be missing, shared or used as input and output, and samples
    // of any kind. Moderate samples at usual rates must give finite output.
    void process()
    {
        const std::uint8_t how = bytes.byte();
        const VstInt32 frames = how & 1 ? bytes.byte() % kMaxFrames : bytes.byte() % 40 - 2;
        const auto length = static_cast<std::size_t>(std::max(frames, 0));
        const auto few = bytes.take<std::uint32_t>();
        // Separate allocations, each exactly as long as the block.
        std::vector<std::vector<float>> samples(
            static_cast<std::size_t>(effect->numInputs + effect->numOutputs),
            std::vector<float>(length));
        std::vector<float*> in, out;
        for (std::vector<float>& channel : samples) {
            const bool isInput = static_cast<VstInt32>(in.size()) < effect->numInputs;
            (isInput ? in : out).push_back(channel.data());
            for (std::size_t k = 0; isInput && k < length; ++k)
                channel[k] = static_cast<float>((few >> (k % 13)) % 200) / 100.0f - 1.0f;
        }
        if (how & 2 && length > 0)
            for (int i = bytes.byte() % 4; i > 0; --i) {
                float& sample = in[bytes.byte() % in.size()][bytes.byte() % length];
                sample = bytes.take<float>();
                // Samples that are not finite count as silence.
                moderate = moderate && (!std::isfinite(sample) || std::abs(sample) <= 16.0f);
            }
        if (how & 4)
            out[0] = in[0];
        if (how & 8)
            in.back() = in.front();
        if (how & 16)
            in[bytes.byte() % in.size()] = nullptr;
        if (how & 32)
            out[bytes.byte() % out.size()] = nullptr;
        effect->processReplacing(effect, how & 64 ? nullptr : in.data(),
                                 how & 128 ? nullptr : out.data(), frames);
        if (!moderate || how & 128)
            return;
        for (const float* channel : out)
            for (std::size_t k = 0; channel && k < length; ++k)
                require(std::isfinite(channel[k]), "an output that is not finite");
    }

    // Hosts call back from inside callbacks, and set again the parameter that was reported.
    static VstIntPtr answer(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr, void*, float opt)
    {
        if (opcode == audioMasterVersion)
            return 2400;
        Host* const host = std::exchange(current, nullptr);
        if (!host)
            return 0;
        if (host->manners & kCallsBack) {
            if (opcode == audioMasterAutomate) {
                requireValue(host->get(index));
                host->set(index, opt);
            }
            if (host->innerSaves++ < kMaxInnerSaves)
                host->save();
            host->requireArrangements(true, true);
        }
        if (opcode == audioMasterSizeWindow && host->manners & kClosesInSizeWindow)
            host->dispatch(effEditClose);
        current = host;
        return opcode == audioMasterSizeWindow && !(host->manners & kRefusesSizes);
    }

    static AEffect* make()
    {
        surroundings();
        AEffect* const made = VSTPluginMain(answer);
        require(made != nullptr, "no effect");
        return made;
    }

    static inline Host* current = nullptr;  // whose callbacks are answered

    Bytes& bytes;
    AEffect* const effect = make();
    const std::uint8_t manners;
    std::optional<VSTGUI::OffscreenHost> windows[2];
    int blocks = 0, openings = 0, pictures = 0, innerSaves = 0;
    bool moderate = true;  // all samples so far, and the rates
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int kMaxCalls = 100;
    Bytes bytes(data, size);
    Host host(bytes);
    for (int calls = 0; calls < kMaxCalls && !bytes.empty(); ++calls)
        host.callSomething();
    host.requireSound();
    return 0;
}

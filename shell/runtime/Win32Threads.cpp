// The locks and thread-local values of the C++ runtime inside the Windows library.
//
// The compiler's own threads library takes memory, two handles and one of the 1088 slots of
// thread-local storage that a process has, and returns none of them when the plug-in is unloaded;
// when no slot is left it aborts the host. What stands here takes memory only, and frees it.
// Staying loaded instead would keep the file from being replaced while the host runs.
//
// These are the functions that the runtime and the plug-in call. With a further one the linker
// takes it from that library and reports the others as defined twice: it has to be added here.
#include <cerrno>
#include <cstdlib>
#include <pthread.h>
#include <sched.h>
#include <windows.h>

namespace {

// One for all, since they are held briefly and never while audio is processed.
SRWLOCK lock = SRWLOCK_INIT;
CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;

class Locked {
public:
    Locked() { AcquireSRWLockExclusive(&lock); }
    ~Locked() { ReleaseSRWLockExclusive(&lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

    void tell() const { WakeAllConditionVariable(&changed); }
    void wait() const { SleepConditionVariableSRW(&changed, &lock, INFINITE, 0); }
};

// A held mutex has its thread in the lower half, and in the upper one how often that thread holds
// it, for all may be held repeatedly. Free ones have what they were initialised with, or this.
constexpr pthread_mutex_t kFree = PTHREAD_MUTEX_INITIALIZER;
constexpr pthread_mutex_t kHeldOnce = pthread_mutex_t{1} << 32;

bool isOthers(pthread_mutex_t mutex)
{
    return mutex > 0 && static_cast<DWORD>(mutex) != GetCurrentThreadId();
}

// A thread's value under a key.
struct Value {
    DWORD thread;
    pthread_key_t key;
    void* value;
    Value* next;
};
Value* values = nullptr;

constexpr pthread_key_t kMaxKeys = 8;
void (*destructors[kMaxKeys])(void*);
pthread_key_t keys = 0;

Value* valueOfThread(pthread_key_t key)
{
    Value* each = values;
    while (each && (each->key != key || each->thread != GetCurrentThreadId()))
        each = each->next;
    return each;
}

// The first that is this thread's, or anyone's for 0, taken out of the list.
Value* takeValue(DWORD thread)
{
    const Locked locked;
    for (Value** link = &values; *link; link = &(*link)->next)
        if (thread == 0 || (*link)->thread == thread) {
            Value* const taken = *link;
            *link = taken->next;
            return taken;
        }
    return nullptr;
}

void endValues(DWORD thread)
{
    while (Value* const each = takeValue(thread)) {
        if (each->value && destructors[each->key])
            destructors[each->key](each->value);
        std::free(each);
    }
}

struct AllValues {
    ~AllValues() { endValues(0); }
};

// Made first and therefore destroyed last: whatever else ends may still use them.
__attribute__((init_priority(101))) const AllValues allValues;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason == DLL_THREAD_DETACH)
        endValues(GetCurrentThreadId());
    return TRUE;
}

pthread_t pthread_self()
{
    return GetCurrentThreadId();
}

int sched_yield()
{
    Sleep(0);
    return 0;
}

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*)
{
    *mutex = kFree;
    return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*)
{
    return 0;
}

int pthread_mutex_lock(pthread_mutex_t* mutex)
{
    const Locked locked;
    while (isOthers(*mutex))
        locked.wait();
    *mutex = kHeldOnce + (*mutex > 0 ? *mutex : GetCurrentThreadId());
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    const Locked locked;
    *mutex -= kHeldOnce;
    if (*mutex < kHeldOnce) {
        *mutex = kFree;
        locked.tell();
    }
    return 0;
}

// Waiters look again whenever anything changes.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t* mutex)
{
    const Locked locked;
    const pthread_mutex_t held = *mutex;
    *mutex = kFree;
    locked.tell();
    do
        locked.wait();
    while (isOthers(*mutex));
    *mutex = held;
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t*)
{
    const Locked locked;
    locked.tell();
    return 0;
}

int pthread_once(pthread_once_t* once, void (*function)())
{
    enum : pthread_once_t { NotYet, Done, Running };
    {
        const Locked locked;
        while (*once == Running)
            locked.wait();
        if (*once == Done)
            return 0;
        *once = Running;
    }
    struct Ending {
        ~Ending()
        {
            const Locked locked;
            *once = outcome;
            locked.tell();
        }
        pthread_once_t* const once;
        pthread_once_t outcome;
    } ending{once, NotYet};
    function();  // may throw
    ending.outcome = Done;
    return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destructor)(void*))
{
    const Locked locked;
    if (keys == kMaxKeys)
        return EAGAIN;
    destructors[keys] = destructor;
    *key = keys++;
    return 0;
}

void* pthread_getspecific(pthread_key_t key)
{
    const Locked locked;
    const Value* const found = valueOfThread(key);
    return found ? found->value : nullptr;
}

int pthread_setspecific(pthread_key_t key, const void* value)
{
    const Locked locked;
    Value* found = valueOfThread(key);
    if (!found) {
        found = static_cast<Value*>(std::malloc(sizeof(Value)));
        if (!found)
            return ENOMEM;
        *found = {GetCurrentThreadId(), key, nullptr, values};
        values = found;
    }
    found->value = const_cast<void*>(value);
    return 0;
}

// The locks and thread-local values of the C++ runtime inside the Windows library.
//
// The compiler's own threads library allocates memory, two handles and one of the 1088 slots of
// thread-local storage that a process has, and releases none of them when the plug-in is unloaded;
// if no slot is left it aborts the host. The functions here allocate memory only, and free it.
// Staying loaded instead would keep the file from being replaced while the host runs.
//
// These are all the functions that the runtime and the plug-in call. If another one is called, the
// linker takes it from that library and reports these as defined twice: it has to be added here.
#include <cerrno>
#include <cstdlib>
#include <pthread.h>
#include <sched.h>
#include <windows.h>

namespace {

// One lock for all mutexes and keys, since it is held briefly and never while audio is processed.
SRWLOCK lock = SRWLOCK_INIT;
CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;

class Locked {
public:
    Locked() { AcquireSRWLockExclusive(&lock); }
    ~Locked() { ReleaseSRWLockExclusive(&lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

    void wakeAll() const { WakeAllConditionVariable(&changed); }
    void wait() const { SleepConditionVariableSRW(&changed, &lock, INFINITE, 0); }
};

// A locked mutex has the id of its thread in the lower half and the number of locks in the upper
// half: every mutex is recursive. A free one has kFree or what it was initialised with.
constexpr pthread_mutex_t kFree = PTHREAD_MUTEX_INITIALIZER;
constexpr pthread_mutex_t kHeldOnce = pthread_mutex_t{1} << 32;

bool isHeldByOther(pthread_mutex_t mutex)
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

// Removes the first value of a thread, or of any thread for 0, from the list; null without one.
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

void destroyValues(DWORD thread)
{
    while (Value* const each = takeValue(thread)) {
        if (each->value && destructors[each->key])
            destructors[each->key](each->value);
        std::free(each);
    }
}

struct AllValues {
    ~AllValues() { destroyValues(0); }
};

// Constructed first and therefore destroyed last, since other destructors may use the values.
__attribute__((init_priority(101))) const AllValues allValues;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason == DLL_THREAD_DETACH)
        destroyValues(GetCurrentThreadId());
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
    while (isHeldByOther(*mutex))
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
        locked.wakeAll();
    }
    return 0;
}

// May return without a broadcast, as the standard allows: every change wakes all waiting threads.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t* mutex)
{
    const Locked locked;
    const pthread_mutex_t held = *mutex;
    *mutex = kFree;
    locked.wakeAll();
    do
        locked.wait();
    while (isHeldByOther(*mutex));
    *mutex = held;
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t*)
{
    const Locked locked;
    locked.wakeAll();
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
    struct Completion {
        ~Completion()
        {
            const Locked locked;
            *once = outcome;
            locked.wakeAll();
        }
        pthread_once_t* const once;
        pthread_once_t outcome;
    } completion{once, NotYet};
    function();  // may throw
    completion.outcome = Done;
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

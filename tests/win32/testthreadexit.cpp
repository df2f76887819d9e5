// The destructors of a thread's thread_local objects run while the thread's other thread_local
// variables still hold their values, not after the runtime has freed them.
#include "check.h"

#include <thread>

namespace {
thread_local int setByThread = 0;
int seenAtExit = 0;

struct Marker
{
    bool used = false;
    ~Marker() { seenAtExit = setByThread; }
};
thread_local Marker marker;
} // namespace

int wmain()
{
    for (int round = 1; round <= 5; ++round) {
        std::thread([round] {
            setByThread = round;
            marker.used = true;
        }).join();
        CHECK(seenAtExit == round);
    }
    return check::finish();
}

#pragma once
// Waits on the calling thread, without passing events, until a condition holds that another thread brings about. It is
// looked at each millisecond; false (and a failure of the test) when it does not come in a minute.

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

inline void Await(const std::function<bool()> &ready)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!ready() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_TRUE(ready());
}

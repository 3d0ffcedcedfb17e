#pragma once
// Lets the program run out of memory at a chosen place: `new` of this test program counts, and raises std::bad_alloc
// where it is told to. One thread at a time; other threads' memory is not counted. What the toolkit's own containers
// take is not `new`'s and never fails here.

namespace failing_new {

// While one lives, the allocation number `at` of this thread (from 0) fails.
class Guard
{
public:
    explicit Guard(int at);
    ~Guard();
    Guard(const Guard &) = delete;
    Guard &operator=(const Guard &) = delete;
};

} // namespace failing_new

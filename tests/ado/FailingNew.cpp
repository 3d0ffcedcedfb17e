#include "tests/ado/FailingNew.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int g_left = -1; // allocations until one fails; below 0: none does

} // namespace

failing_new::Guard::Guard(int at)
{
    g_left = at;
}

failing_new::Guard::~Guard()
{
    g_left = -1;
}

// Over malloc, so that a sanitizer goes on watching.
void *operator new(std::size_t size)
{
    if (g_left >= 0 && g_left-- == 0)
        throw std::bad_alloc();
    if (void *const memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

// The forms that raise nothing belong to the same deletes.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    if (g_left >= 0 && g_left-- == 0)
        return nullptr;
    return std::malloc(size ? size : 1);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    std::free(memory);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

#pragma once

#include <functional>

// Lets a test make the next business call fail the way a real host failure would (by
// throwing), to check that callers report it and stay usable. Never set in production.
class BusinessFaultInjection
{
public:
    static void setFault(std::function<void()> fault);
    static void clear();
    // Runs and clears the pending fault, if any.
    static void check();
};

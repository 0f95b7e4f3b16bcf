#pragma once

// Where a long business operation reports its progress (0 to 100); the host's progress bar
// is one.
class ProgressSink
{
public:
    virtual ~ProgressSink() = default;
    virtual void setValue(int value) = 0;
};

#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Peak resident memory of this process in MiB (VmHWM).
inline double peakMemoryMiB()
{
    double kib = 0;
    if (FILE* status = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, status))
            if (std::strncmp(line, "VmHWM:", 6) == 0)
                kib = std::atof(line + 6);
        std::fclose(status);
    }
    return kib / 1024.0;
}

// Lets the high-water mark fall back to what is resident now, so that one benchmark's peak
// does not carry into the next. A peak measured so still holds what the process had before
// (a warm heap); what a user waits for at start-up is measured in a fresh process.
inline void resetPeakMemory()
{
    // Not through QFile: it opens with O_TRUNC, which the proc file refuses.
    if (FILE* clear = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", clear);
        std::fclose(clear);
    }
}

#pragma once

namespace skl::platform {

// A moment of the local clock.
struct LocalTime {
    int Year = 0;
    int Month = 0;  // 1 to 12
    int Day = 0;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

// The local date and time now, in the time zone the system is set to.
LocalTime LocalTimeNow();

}  // namespace skl::platform

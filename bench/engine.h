#pragma once

#include "bank/record_bank.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "platform/system/system_random.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"

#include <string>

namespace cuedrill::bench {

/// A course with the adapters and services that the program uses for it.
struct Engine {
    explicit Engine(const std::string& path)
    {
        course.db_path = path;
        course.course_name = "bench";
        dead_times.init_dead_time_array();
    }

    void open()
    {
        course.apri_db();
        params.read_params();
        course.set_side_fields();
        course.record_count = course.count_records();
    }

    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    platform::system::SystemRandom random;
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database{text_compare};
    store::Course course{database};
    store::CourseParamsStore params{course, clock};
    scheduler::DeadTimes dead_times;
    bank::RecordBank bank{course, text_compare};
};

} // namespace cuedrill::bench

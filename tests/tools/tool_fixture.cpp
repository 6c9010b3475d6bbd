#include "tools/tool_fixture.h"

#include "store/course.h"
#include "tools/verb.h"

#include <fstream>
#include <sstream>

namespace cuedrill::tools {

int ToolFixture::run(const std::vector<std::string>& line)
{
    std::ostringstream data;
    std::ostringstream messages;
    Surroundings around{data, messages, folder.file("data"), folder.file("runtime"), false};
    const int code = run_tool(line, around);
    out = data.str();
    err = messages.str();
    return code;
}

fakes::CourseBuilder ToolFixture::many(int records)
{
    fakes::CourseBuilder builder;
    for (int i = 1; i <= records; ++i)
        builder.question("question " + std::to_string(i), "answer " + std::to_string(i)).level(i % 5).attempts(i % 9);
    builder.text_param("course_title", "Capitals");
    return builder;
}

void ToolFixture::make_copy(const std::string& course_path, common::DateTime time)
{
    fakes::RealEngine engine;
    store::Course course(engine.database);
    course.db_path = course_path;
    course.apri_db();
    copies.begin(course, time)->make_at_once();
}

void ToolFixture::overwrite_page(const std::string& path, std::size_t page)
{
    constexpr std::size_t page_size = 4096;
    std::fstream bytes(path, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(static_cast<std::streamoff>((page - 1) * page_size));
    bytes << std::string(page_size, '\xee');
}

} // namespace cuedrill::tools

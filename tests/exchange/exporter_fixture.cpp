#include "exchange/exporter_fixture.h"

namespace cuedrill::exchange {

ExportFixture::ExportFixture() = default;

ExportFixture::~ExportFixture() = default;

void ExportFixture::SetUp()
{
    course.params.course_title = "Capitals";
}

void ExportFixture::TearDown()
{
    if (!course_path.empty()) {
        EXPECT_EQ(fakes::read_course(course_path), before);
    }
    expect_nothing_open();
}

void ExportFixture::expect_nothing_open() const
{
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(database.open_recordsets(), 0);
}

void ExportFixture::open(const fakes::CourseBuilder& builder)
{
    course_path = builder.write(folder);
    open_written();
}

void ExportFixture::open(const Texts& texts)
{
    fakes::CourseBuilder builder;
    for (const auto& [q, a] : texts)
        builder.question(q, a);
    open(builder);
}

void ExportFixture::open_written()
{
    before = fakes::read_course(course_path);
    course.db_path = course_path;
    course.apri_db();
    course.set_side_fields();
    files.files[course_path] = "the course";
}

std::string ExportFixture::exported(bool numbered)
{
    exporter.export_file(target, numbered);
    return files.files.at(target);
}

std::string ExportFixture::heading(const std::string& title)
{
    return "/*/ Cuedrill questions and answers exported form " + title + " on 15/11/2026 05:47:17\r\n\r\n\r\n";
}

std::string ExportFixture::ending(int count)
{
    return "\r\n------------------------\r\n/*/ " + std::to_string(count) + " questions and answers exported\r\n";
}

std::string ExportFixture::record(const std::string& q, const std::string& a)
{
    return "@Q@\r\n" + q + "\r\n@A@\r\n" + a + "\r\n\r\n";
}

std::string ExportFixture::about_course(const std::string& reason) const
{
    return "The course " + course_path + " could not be read or written.\r\n\r\n" + reason;
}

std::string ExportFixture::nothing_written(const std::string& reason) const
{
    return reason + "\r\n\r\n" + target + " is as it was.";
}

std::string ExportFixture::partly_written(const std::string& reason) const
{
    return reason + "\r\n\r\nWhat was written is kept in " + unfinished +
           " until the next export into that folder.\r\n" + target + " is as it was.";
}

} // namespace cuedrill::exchange

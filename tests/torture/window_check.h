#pragma once

#include "fakes/temp_folder.h"
#include "platform/icu/icu_text_compare.h"
#include "torture/disk_image.h"
#include "torture/window_report.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::torture {

/// What the program with its window has said, and whether the files that it has left agree with that.
class WindowCheck {
public:
    /// Takes what the program says, in pieces of any size.
    void take(std::string_view output);

    /// How many acts have ended.
    [[nodiscard]] std::int64_t acts() const { return acts_; }

    /// What is wrong with the files after a kill or a power cut now; empty if nothing is.
    /// @param after_power_cut no setting is promised to be on the disk when it is set, and an entry of removed.txt that
    /// is being appended may be torn.
    [[nodiscard]] std::string complaint(const DiskImage& image, bool after_power_cut);

    /// The program is dead, and the next one goes on with what is in the image, which was found good.
    void go_on_with(const DiskImage& image);

    /// The same, in place of a check that goes on with other images.
    void go_on_with(const DiskImage& image, const WindowCheck& other);

private:
    using Texts = std::pair<std::string, std::string>;
    using TextSet = std::set<Texts>;

    void end_act();
    void check_course(const WindowState& found) const;
    void check_records(const WindowRows& found) const;
    void check_params(const NamedValues& found) const;
    void check_kept(const DiskImage& image, const WindowRows& found, std::ptrdiff_t most_torn);
    void check_copies(const DiskImage& image);
    void check_export(const DiskImage& image) const;
    void check_settings(const DiskImage& image, bool may_be_older);

    [[nodiscard]] bool may_be(Act act) const { return report_.under_way() && report_.step().act == act; }
    [[nodiscard]] const store::QaTexts& texts_of_step() const { return report_.step().texts.at(0); }
    [[nodiscard]] TextSet texts_that_must_be_kept(const WindowRows& found) const;
    [[nodiscard]] TextSet kept_texts(const std::string& bytes);
    [[nodiscard]] NamedValues settings_in(const DiskImage& image);
    [[nodiscard]] WindowState course_in(const DiskImage& image);
    [[nodiscard]] WindowState read_course(const std::string& course, const std::string& journal);

    platform::icu::IcuTextCompare text_compare_;
    fakes::TempFolder folder_;
    std::string output_; ///< the beginning of a line
    WindowReport report_;
    std::int64_t acts_ = 0;
    WindowState state_; ///< after the last act
    TextSet must_keep_; ///< texts that have left the course, or are in the editor and in the draft
    TextSet known_;     ///< everything that was ever typed, imported or in the course
    std::map<std::string, std::set<std::string>> settings_; ///< all values that each one had

    // What was read of bytes that many images share.
    std::map<std::pair<std::size_t, std::size_t>, WindowState> courses_;
    std::map<std::size_t, TextSet> kept_;
    std::map<std::pair<std::string, std::size_t>, NamedValues> read_settings_;
    std::set<std::size_t> sound_copies_;
};

} // namespace cuedrill::torture

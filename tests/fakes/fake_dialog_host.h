#pragma once

#include "platform/desktop.h"

namespace cuedrill::fakes {

/// A helper window that only records whether it is loaded.
class FakeDialogHost : public platform::DialogHost {
public:
    [[nodiscard]] common::Twips least_height() const override;
    [[nodiscard]] common::Twips least_width() const override;
    void load() override;
    void unload() override;

    common::Twips smallest_height = 435;
    common::Twips smallest_width = 1680;
    bool loaded = false;
    int loads = 0;
};

} // namespace cuedrill::fakes

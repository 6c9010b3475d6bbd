#include "fakes/fake_dialog_host.h"

namespace cuedrill::fakes {

common::Twips FakeDialogHost::least_height() const
{
    return smallest_height;
}

common::Twips FakeDialogHost::least_width() const
{
    return smallest_width;
}

void FakeDialogHost::load()
{
    loaded = true;
    ++loads;
}

void FakeDialogHost::unload()
{
    loaded = false;
}

} // namespace cuedrill::fakes

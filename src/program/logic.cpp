#include "program/logic.h"

namespace cuedrill::program {

Logic::Logic(const LogicPlatform& platform) : p(platform)
{
    window_ports.connect(main_window);
    main_window.attach();
    big_box.attach();
    commands.attach(menu);
}

Logic::~Logic() = default;

} // namespace cuedrill::program

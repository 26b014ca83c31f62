#include "tests/VornMac/Tour/Shot.h"

namespace vorn::testing {

Stage::Stage(const Shot& shot)
    : window_(shot.moment.count() > 0 ? WindowFixture::Motion::full : WindowFixture::Motion::reduced),
      moves_(shot.moment.count() > 0)
{
    shot.play(window_);
    window_.settle();
    Appearance::shared().setTextScale(shot.textScale);
    window_.window().resize(shot.size);
    if (moves_) animations_.pass(static_cast<int>(shot.moment.count()));
    if (shot.pose) {
        window_.lay(); // actions apply to a laid-out window
        shot.pose(window_);
    }
    if (!moves_) rest();
}

Stage::~Stage()
{
    Appearance::shared().setTextScale(1);
}

Themed Stage::picture()
{
    Themed pictures;
    for (std::size_t index = 0; index < themes.size(); ++index) {
        Appearance::shared().setTheme(themes.at(index).first);
        if (!moves_) rest();
        if (moves_) window_.picture(); // the software renderer shows a layer a frame late
        pictures.at(index) = window_.picture();
    }
    return pictures;
}

} // namespace vorn::testing

#pragma once

#include <bit>
#include <cstddef>

namespace ledgix::jet {

// Notices when a walk along pointers runs in a circle, with the memory of one place: each place is compared with one
// met earlier, which is replaced at steps 1, 2, 4, 8 ...
template <typename Place>
class CircleGuard {
public:
    // Tells it the next place; true when the walk is known to go round.
    bool RunsInCircle(const Place& place) {
        if (step_ > 0 && place == remembered_)
            return true;
        if (std::has_single_bit(++step_))
            remembered_ = place;
        return false;
    }

private:
    Place remembered_{};
    std::size_t step_ = 0;
};

}  // namespace ledgix::jet

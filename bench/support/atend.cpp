#include "atend.h"

#include <utility>
#include <vector>

namespace {

std::vector<std::function<void()>> &remembered()
{
    static std::vector<std::function<void()>> releases;
    return releases;
}

} // namespace

void AtEnd::call(std::function<void()> release)
{
    remembered().push_back(std::move(release));
}

void AtEnd::run()
{
    while (!remembered().empty()) {
        const std::function<void()> release = std::move(remembered().back());
        remembered().pop_back();
        release();
    }
}

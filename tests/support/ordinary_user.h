// What a user without rights over other people's files may do.
#pragma once

#include <grp.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace fenmark::test {

// Runs something as a user without rights over other people's files; 0 if it held. In this process, so that what fails
// in it is shown.
inline int asOrdinaryUser(const std::function<bool()>& holds) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() != 0) {
        return holds() ? 0 : 1;
    }
    std::vector<gid_t> groups(static_cast<std::size_t>(getgroups(0, nullptr)));
    const int count = getgroups(static_cast<int>(groups.size()), groups.data());
    if (count < 0 || setgroups(0, nullptr) != 0 || setresgid(kNobody, kNobody, 0) != 0 ||
        setresuid(kNobody, kNobody, 0) != 0) {
        return 2;
    }
    const bool held = holds();
    if (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0 ||
        setgroups(static_cast<std::size_t>(count), groups.data()) != 0) {
        return 3;
    }
    return held ? 0 : 1;
}

} // namespace fenmark::test

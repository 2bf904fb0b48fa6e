#include "solsys/sso_id.h"

#include <cstdio>
#include <cstring>

namespace {

void copy_name(const char (&from)[80], char (&to)[80]) {
    const void* end = std::memchr(from, '\0', sizeof from);
    std::size_t length = sizeof from - 1;
    if (end != nullptr) {
        length = static_cast<std::size_t>(static_cast<const char*>(end) - from);
    } else {
        std::fputs("SSOName too short\n", stdout);
    }
    std::memmove(to, from, length);
    std::memset(to + length, 0, sizeof to - length);
}

}  // namespace

SSO_ID::SSO_ID(const SSO_ID& other)
    : type(other.type), number(other.number), spare1(other.spare1), spare2(other.spare2) {
    copy_name(other.name, name);
}

SSO_ID& SSO_ID::operator=(const SSO_ID& other) {
    if (this == &other) return *this;
    type = other.type;
    number = other.number;
    spare1 = other.spare1;
    copy_name(other.name, name);
    spare2 = other.spare2;
    return *this;
}

// Whether the tests run under the address sanitizer, where random tests take fewer steps for the same time.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define NIRA_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NIRA_SANITIZED 1
#endif
#endif

namespace nira {

#ifdef NIRA_SANITIZED
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

}  // namespace nira

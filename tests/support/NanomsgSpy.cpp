#include "support/NanomsgSpy.h"

#include <nanomsg/nn.h>

#include <cerrno>
#include <map>
#include <mutex>

namespace tessera::test {

namespace {

std::mutex mutex;
std::map<std::string, int> counts;
std::map<std::string, int> failures;

// Whether this call is to fail; errno is set then.
bool enter(const char* operation) {
    const std::lock_guard lock(mutex);
    ++counts[operation];
    const auto failure = failures.find(operation);
    if (failure == failures.end()) {
        return false;
    }
    errno = failure->second;
    failures.erase(failure);
    return true;
}

} // namespace

void NanomsgSpy::reset() {
    const std::lock_guard lock(mutex);
    counts.clear();
    failures.clear();
}

int NanomsgSpy::calls(const std::string& operation) {
    const std::lock_guard lock(mutex);
    return counts[operation];
}

int NanomsgSpy::totalCalls() {
    const std::lock_guard lock(mutex);
    int total = 0;
    for (const auto& [operation, count] : counts) {
        total += count;
    }
    return total;
}

void NanomsgSpy::failNext(const std::string& operation, int error) {
    const std::lock_guard lock(mutex);
    failures[operation] = error;
}

} // namespace tessera::test

using tessera::test::enter;

// The linker takes each call here, and the library's own one from the name behind __real_.
extern "C" {

int __real_nn_socket(int domain, int protocol);
int __wrap_nn_socket(int domain, int protocol) {
    return enter("nn_socket") ? -1 : __real_nn_socket(domain, protocol);
}

int __real_nn_close(int s);
int __wrap_nn_close(int s) {
    return enter("nn_close") ? -1 : __real_nn_close(s);
}

int __real_nn_setsockopt(int s, int level, int option, const void* value, size_t length);
int __wrap_nn_setsockopt(int s, int level, int option, const void* value, size_t length) {
    return enter("nn_setsockopt") ? -1 : __real_nn_setsockopt(s, level, option, value, length);
}

int __real_nn_bind(int s, const char* address);
int __wrap_nn_bind(int s, const char* address) {
    return enter("nn_bind") ? -1 : __real_nn_bind(s, address);
}

int __real_nn_connect(int s, const char* address);
int __wrap_nn_connect(int s, const char* address) {
    return enter("nn_connect") ? -1 : __real_nn_connect(s, address);
}

int __real_nn_send(int s, const void* bytes, size_t length, int flags);
int __wrap_nn_send(int s, const void* bytes, size_t length, int flags) {
    return enter("nn_send") ? -1 : __real_nn_send(s, bytes, length, flags);
}

int __real_nn_recv(int s, void* bytes, size_t length, int flags);
int __wrap_nn_recv(int s, void* bytes, size_t length, int flags) {
    return enter("nn_recv") ? -1 : __real_nn_recv(s, bytes, length, flags);
}
}

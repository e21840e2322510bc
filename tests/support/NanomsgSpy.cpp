#include "support/NanomsgSpy.h"

#include <nanomsg/nn.h>

#include <dlfcn.h>

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

template <class Function>
Function* realOne(const char* operation) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, operation));
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
using tessera::test::realOne;

extern "C" {

int nn_socket(int domain, int protocol) {
    static const auto next = realOne<decltype(nn_socket)>("nn_socket");
    return enter("nn_socket") ? -1 : next(domain, protocol);
}

int nn_close(int s) {
    static const auto next = realOne<decltype(nn_close)>("nn_close");
    return enter("nn_close") ? -1 : next(s);
}

int nn_setsockopt(int s, int level, int option, const void* value, size_t length) {
    static const auto next = realOne<decltype(nn_setsockopt)>("nn_setsockopt");
    return enter("nn_setsockopt") ? -1 : next(s, level, option, value, length);
}

int nn_bind(int s, const char* address) {
    static const auto next = realOne<decltype(nn_bind)>("nn_bind");
    return enter("nn_bind") ? -1 : next(s, address);
}

int nn_connect(int s, const char* address) {
    static const auto next = realOne<decltype(nn_connect)>("nn_connect");
    return enter("nn_connect") ? -1 : next(s, address);
}

int nn_send(int s, const void* bytes, size_t length, int flags) {
    static const auto next = realOne<decltype(nn_send)>("nn_send");
    return enter("nn_send") ? -1 : next(s, bytes, length, flags);
}

int nn_recv(int s, void* bytes, size_t length, int flags) {
    static const auto next = realOne<decltype(nn_recv)>("nn_recv");
    return enter("nn_recv") ? -1 : next(s, bytes, length, flags);
}
}

#include "link/LinkSocket.h"

#include "platform/IpcAddress.h"
#include "platform/IpcPace.h"
#include "platform/ProcessEnd.h"

#include <nanomsg/nn.h>
#include <nanomsg/pair.h>

#include <cstdio>
#include <thread>

namespace tessera {

namespace {

constexpr std::string_view kIpcScheme = "ipc://";
constexpr int kTimeOutMs = 4000;
// EAGAIN. An expired time-out comes as ETIMEDOUT instead, so a wait that runs out prints the "failed" line, and the
// "timed out" line is left for an EAGAIN during a wait. Readers of these lines know them so.
constexpr int kNothingThere = 11;

bool fitsPlatform(std::string_view address) {
    return !address.starts_with(kIpcScheme) || platform::fitsIpcAddress(address.substr(kIpcScheme.size()));
}

void printAttachFailure(int error) {
    std::printf("nn_bind/nn_connect failed with error code %d\n", error);
}

} // namespace

LinkSocket::~LinkSocket() {
    // In a host that ends without a terminate the last exit handlers come here, and nanomsg would wait for its own
    // thread, which may not be there any more.
    if (!platform::otherThreadsAreGone()) {
        close();
    }
}

std::string LinkSocket::userAddress(std::string_view user) {
    std::string address = "ipc:///tmp/mgrv_tesxcon_";
    address.append(user).append(".ipc");
    return address;
}

bool LinkSocket::createSocket() {
    socket_ = nn_socket(AF_SP, NN_PAIR);
    // On a socket that couldn't be made these fail harmlessly.
    nn_setsockopt(socket_, NN_SOL_SOCKET, NN_RCVTIMEO, &kTimeOutMs, sizeof kTimeOutMs);
    nn_setsockopt(socket_, NN_SOL_SOCKET, NN_SNDTIMEO, &kTimeOutMs, sizeof kTimeOutMs);
    if (socket_ == -1) {
        std::printf("nn_socket failed with error code %d\n", nn_errno());
        return false;
    }
    return true;
}

int LinkSocket::attach(LinkSide side) const {
    return side == LinkSide::Bind ? nn_bind(socket_, address_.c_str()) : nn_connect(socket_, address_.c_str());
}

bool LinkSocket::open(LinkSide side) {
    if (open_) {
        return true;
    }
    if (socket_ == -1 && !createSocket()) {
        return false;
    }
    if (!fitsPlatform(address_)) {
        printAttachFailure(platform::nameTooLongError());
        return false;
    }
    if (attach(side) == -1) {
        printAttachFailure(nn_errno());
        return false;
    }
    open_ = true;
    return true;
}

bool LinkSocket::close() {
    // A socket left behind by a failed bind isn't open, so it isn't closed: the next open() goes on with it.
    if (socket_ == -1 || !open_) {
        return true;
    }
    open_ = false;
    if (nn_close(socket_) == -1) {
        std::printf("nn_close failed with error code %d\n", nn_errno());
        return false;
    }
    socket_ = -1;
    return true;
}

int LinkSocket::send(std::string_view message, SendMode mode) {
    if (mode == SendMode::NonBlocking) {
        letLastMessageGo();
    }
    const int sent = nn_send(socket_, message.data(), message.size(), mode == SendMode::Blocking ? 0 : NN_DONTWAIT);
    if (sent != -1) {
        lastSend_ = std::chrono::steady_clock::now();
    }
    return sent;
}

// Nobody sends a refused message again. So two in one breath, such as those of two edits
// that are given up, both have to get out.
void LinkSocket::letLastMessageGo() const {
    std::this_thread::sleep_until(lastSend_ + platform::ipcSendPause());
}

std::string LinkSocket::receive() {
    return receiveOne(Wait::No);
}

std::string LinkSocket::sendAndReceive(std::string_view message, SendMode mode) {
    send(message, mode);
    return receiveOne(Wait::Yes);
}

std::string LinkSocket::receiveOne(Wait wait) {
    void* bytes = nullptr;
    const int length = nn_recv(socket_, &bytes, NN_MSG, wait == Wait::Yes ? 0 : NN_DONTWAIT);
    if (length > 0) {
        std::string message(static_cast<const char*>(bytes), static_cast<std::size_t>(length));
        nn_freemsg(bytes);
        return message;
    }
    if (length == 0) {
        nn_freemsg(bytes);
        return {};
    }
    const int error = nn_errno();
    if (error != kNothingThere) {
        std::printf("nn_recv failed with error code %d\n", error);
    } else if (wait == Wait::Yes) {
        std::printf("nn_recv timed out!\n");
    }
    return {};
}

} // namespace tessera

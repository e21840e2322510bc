// FakePeer: the other end of the link, on a thread of its own: it keeps what arrives, answers the messages that wait
// for an answer, and sends what it is told to.
#pragma once

#include "link/LinkSocket.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tessera::test {

class FakePeer {
public:
    // Connects to the address at once, whether somebody is there or not.
    explicit FakePeer(const std::string& address) : socket_(address) {
        socket_.open(LinkSide::Connect);
        thread_ = std::thread([this] { run(); });
    }
    ~FakePeer() {
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        thread_.join();
    }
    FakePeer(const FakePeer&) = delete;
    FakePeer& operator=(const FakePeer&) = delete;

    // Nothing: messages that wait get no answer.
    void answerWith(std::optional<std::string> answer) {
        const std::lock_guard lock(mutex_);
        answer_ = std::move(answer);
    }
    // Runs on the peer's thread, with a question whose sender is waiting for the answer.
    void beforeAnswering(std::function<void(const std::string&)> hook) {
        const std::lock_guard lock(mutex_);
        beforeAnswering_ = std::move(hook);
    }
    void send(std::string message) {
        const std::lock_guard lock(mutex_);
        outgoing_.push_back(std::move(message));
    }
    // What has arrived, once it is so many messages; fewer when they don't come in time.
    std::vector<std::string> received(std::size_t count) {
        std::unique_lock lock(mutex_);
        arrived_.wait_for(lock, std::chrono::seconds(20), [&] { return received_.size() >= count; });
        return received_;
    }

private:
    static bool isQuestion(const std::string& message) {
        return message.starts_with("2;sendConnectionInfo;") || message.starts_with("2;suspendKiteDriver;");
    }

    void run() {
        for (;;) {
            const std::string message = socket_.receive();
            std::unique_lock lock(mutex_);
            if (ending_) {
                return;
            }
            if (!message.empty()) {
                received_.push_back(message);
                if (isQuestion(message) && beforeAnswering_) {
                    beforeAnswering_(message);
                }
                if (isQuestion(message) && answer_) {
                    socket_.send(*answer_, SendMode::Blocking);
                }
                arrived_.notify_all();
            }
            while (!outgoing_.empty() && socket_.send(outgoing_.front(), SendMode::NonBlocking) >= 0) {
                outgoing_.pop_front();
            }
            lock.unlock();
            if (message.empty()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }
    }

    LinkSocket socket_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::optional<std::string> answer_ = "yes";
    std::function<void(const std::string&)> beforeAnswering_;
    std::deque<std::string> outgoing_;
    std::vector<std::string> received_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace tessera::test

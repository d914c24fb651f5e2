// Work on all cores. Room: authoring. The library's objects live on one thread, so no call of the
// library belongs here, but for its plain decoders.
#pragma once

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace velora::authoring {

// Runs work(0) to work(count - 1), each once, in any order. The first exception comes out when all
// threads have ended.
template <class Work>
void ForEach(int count, Work work) {
  std::atomic<int> next{0};
  std::exception_ptr failure;
  std::mutex guard;
  const auto run = [&] {
    for (int i = next++; i < count; i = next++) {
      try {
        work(i);
      } catch (...) {
        const std::lock_guard<std::mutex> hold(guard);
        if (!failure) failure = std::current_exception();
        next = count;
      }
    }
  };
  std::vector<std::thread> others;
  // A thread for less than two pieces of work does not pay.
  const int threads = std::min(count / 2, static_cast<int>(std::thread::hardware_concurrency()));
  for (int i = 1; i < threads; ++i) others.emplace_back(run);
  run();
  for (std::thread& other : others) other.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace velora::authoring

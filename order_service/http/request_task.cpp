#include "http/request_task.h"

#include <boost/asio/post.hpp>
#include <exception>
#include <utility>

namespace cartonpick::orders {

Answer callHandler(const Handler &handler, const Request &request) {
  try {
    return handler(request);
  } catch (const std::exception &error) {
    return textAnswer(500, error.what());
  }
}

std::shared_ptr<const Job> jobOf(const std::shared_ptr<RequestTask> &task, const Handler &handler,
                                 const io::Executor &executor, std::function<void()> done) {
  const auto finish = [task, done = std::move(done)] {
    task->isDone = true;
    done();
  };
  const auto run = [&handler, executor, task, finish] {
    task->answer = callHandler(handler, task->request);
    boost::asio::post(executor, finish);
  };
  return std::make_shared<const Job>(Job{.run = run, .bytes = task->request.body.size()});
}

}  // namespace cartonpick::orders

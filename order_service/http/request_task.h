#pragma once

#include "http/http_message.h"
#include "http/io_types.h"
#include "http/worker_pool.h"

#include <functional>
#include <memory>

namespace cartonpick::orders {

/// A request that a thread of a pool answers for a connection. Only the thread of the connection
/// reads `isDone`; once that is true, it may read `answer`.
struct RequestTask {
  Request request;
  Answer answer = {};
  bool isDone = false;
};

/// Returns the handler's answer; status 500 with the text of the exception if it throws one.
Answer callHandler(const Handler &handler, const Request &request);

/// Returns the job that answers the task's request by `handler`, which must outlive the job. Then
/// the job has `executor` set `isDone` and call `done`.
std::shared_ptr<const Job> jobOf(const std::shared_ptr<RequestTask> &task, const Handler &handler,
                                 const io::Executor &executor, std::function<void()> done);

}  // namespace cartonpick::orders

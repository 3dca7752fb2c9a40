-- A wrk script: the requests of 64 tablets. Arguments: "lookup" or "send", the number of
-- deliveries, the round number, and optionally "constant" for a path with a constant answer, and
-- "close" for a new connection for each request.
local threads = 0

function setup(thread)
  threads = threads + 1
  thread:set("id", threads)
end

local LINE = '{"barcode":"5012746100000","box":"C%03d","doc":"%d","item":"20138A",'
  .. '"ordernum":"A1","qty":%d,"datepicked":"2026-03-04 09:%02d:%02d","sent":0}'

-- Returns twelve lines that differ from those of every other request: the quantity is the thread's
-- request number, the minute is the round, the second is the thread.
local function picking(delivery, count)
  local lines = {}
  for box = 1, 12 do
    lines[box] = string.format(LINE, box, delivery, count, run, id)
  end
  return "[" .. table.concat(lines, ",") .. "]"
end

function init(arguments)
  kind, deliveries, run = arguments[1], tonumber(arguments[2]), tonumber(arguments[3])
  local options = {}
  for i = 4, #arguments do
    options[arguments[i]] = true
  end
  root = options.constant and "/constant/" or "/qir_pick/servicepick.svc/json/"
  headers = {["Content-Type"] = "application/json", Connection = options.close and "close" or nil}
  count = 0
  math.randomseed(id)
end

function request()
  local delivery = math.random(1, deliveries)
  if kind == "lookup" then
    return wrk.format("GET", root .. "getorderpercarton/" .. delivery, headers)
  end
  count = count + 1
  return wrk.format("POST", root .. "sendpick", headers, picking(delivery, count))
end

function done(summary, latency, requests)
  io.write(string.format("RESULT %d %d %d\n", summary.requests, summary.errors.status,
    summary.duration))
end

"""Measures the order service on PostgreSQL: lookups and sends of 64 concurrent tablets, for growing
numbers of deliveries, compared with the same SQL in pgbench and with constant answers from the same
server. Kills the service after each size and fails unless it has stored every accepted send.

Usage: python3 fleet_bench.py BIN RESULTS.json

BIN is the folder with the programs.
"""

import fileinput
import glob
import os
import re
import subprocess
import sys
import tempfile

from samples import Samples

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.append(os.path.join(HERE, "..", "campaigns", "fleet"))
from loopback import HOST, free_ports
from order_instance import OrderInstance
from postgres_cluster import PostgresCluster

TABLETS, LINES = 64, 12
SIZES = [1_000, 10_000, 100_000, 1_000_000]
ROUNDS, SECONDS = 3, 2
# A proxy keeps its connections; a tablet uses a new one for each request.
WAYS = {"CartonPick": [], "CartonPick, a connection for each request": ["close"]}
SAME_SQL = "floor: the same SQL by pgbench"
CONSTANT = "floor: the same server answering a constant"
MILLISECONDS = {"us": 1e-3, "ms": 1.0, "s": 1e3}

# With wal_level=minimal, rows inserted after a TRUNCATE in the same transaction are not logged.
SETTINGS = {"wal_level": "minimal", "max_wal_senders": 0, "max_wal_size": "8GB",
            "shared_buffers": "1GB", "maintenance_work_mem": "1GB"}

FILL = """
BEGIN;
TRUNCATE order_line, delivery, picked_line;
ALTER TABLE order_line DROP CONSTRAINT order_line_pkey;
INSERT INTO order_line (delivery, position, order_no, customer, brand, order_date, shipping_date,
                        box, item, barcode, description, quantity)
  SELECT delivery, line, 'A1', 'Rosie''s Kitchen', 'HEARTHSIDE', '03/02/2026', '03/05/2026',
         'C00' || line, 20000 + line || 'A', 5012746100000 + line, 'WHITE ENAMEL MUG 350ML', 6
  FROM generate_series(1, {deliveries}) AS delivery, generate_series(0, {lines} - 1) AS line;
ALTER TABLE order_line ADD PRIMARY KEY (delivery, position);
INSERT INTO delivery (number, customer, changed_at, search_text, search_customer)
  SELECT delivery, 'Rosie''s Kitchen', '', delivery || E'\\nrosie''s kitchen', 'Rosie''s Kitchen'
  FROM generate_series(1, {deliveries}) AS delivery;
COMMIT;
VACUUM ANALYZE;
CHECKPOINT;
"""

IS_UNDONE = """EXISTS (SELECT 1 FROM reopening WHERE reopening.delivery = picked_line.delivery AND \
(picked_line.received_at, picked_line.received_no) <= (reopening.reopened_at, reopening.number))"""
SELECT_LINES = f"""\
\\set delivery random(1, :deliveries)
SELECT customer, brand, order_date, shipping_date, delivery, order_no, barcode, item, description, \
quantity, box, (SELECT count(*) FROM (SELECT 1 FROM picked_line WHERE delivery = :delivery AND NOT \
{IS_UNDONE} LIMIT 1) AS sent) FROM order_line WHERE delivery = :delivery ORDER BY position;
"""
# pgbench would take ":MI" for a variable.
NOW = "to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD HH24.MI.SS.US')"
TOUCH_DELIVERY = f"""\
INSERT INTO delivery (number, customer, changed_at, reports) VALUES (:delivery, '', {NOW}, 1) \
ON CONFLICT (number) DO UPDATE SET changed_at = greatest(delivery.changed_at, {NOW}), \
reports = delivery.reports + 1 RETURNING changed_at, reports;
"""
INSERT_PICKED = """\
INSERT INTO picked_line (delivery, order_no, box, item, barcode, quantity, picked_at, received_at, \
received_no) VALUES (:delivery, 'pgbench', 'C{line:03}', '20138A', '5012746100000', :quantity, \
'2026-03-04 09:15:00', '2026-03-04 09:15:00.000000', 1) ON CONFLICT (delivery, order_no, box, item, \
barcode, quantity, picked_at) DO UPDATE SET received_at = excluded.received_at, \
received_no = excluded.received_no WHERE {is_undone};
"""
# The statements that the service sends to its database.
SQL = {
    "lookup": SELECT_LINES,
    "send": "\\set quantity random(0, 2147483647)\n" + SELECT_LINES + "BEGIN;\n" + TOUCH_DELIVERY
            + "".join(INSERT_PICKED.format(line=line, is_undone=IS_UNDONE)
                      for line in range(1, LINES + 1))
            + "COMMIT;\n",
}


def run_wrk(port, *arguments):
    """Returns the number of answered requests, the number of error answers, the seconds per request
    and the 99th percentile of the latency in milliseconds."""
    output = subprocess.run(
        ["wrk", "-t2", f"-c{TABLETS}", f"-d{SECONDS}s", "--latency", "-s",
         os.path.join(HERE, "service_load.lua"), f"http://{HOST}:{port}", "--",
         *map(str, arguments)], check=True, capture_output=True, text=True).stdout
    answered, refused, microseconds = map(int, output.split("RESULT ")[1].split()[:3])
    slowest, unit = re.search(r"99%\s+([\d.]+)(us|ms|s)\s", output).groups()
    return answered, refused, microseconds / 1e6 / answered, float(slowest) * MILLISECONDS[unit]


def run_pgbench(cluster, folder, kind, deliveries):
    """Returns the seconds per transaction and the 99th percentile of the latency in
    milliseconds."""
    with tempfile.TemporaryDirectory(dir=folder) as logs:
        script = os.path.join(logs, "script.sql")
        with open(script, "w", encoding="ascii") as file:
            file.write(SQL[kind])
        output = subprocess.run(
            ["pgbench", "-h", cluster.folder, "-U", "postgres", "-n", "-M", "prepared",
             f"-c{TABLETS}", "-j2", f"-T{SECONDS}", f"-Ddeliveries={deliveries}", "-f", script,
             "--log", f"--log-prefix={logs}/log", "postgres"],
            check=True, capture_output=True, text=True).stdout
        # The third field of a line is the duration of the transaction in microseconds.
        taken = sorted(int(line.split()[2])
                       for line in fileinput.input(glob.glob(f"{logs}/log*")))
    return 1 / float(re.search(r"tps = ([\d.]+)", output).group(1)), \
        taken[len(taken) * 99 // 100] / 1e3


def measure(samples, cluster, folder, port, kind, deliveries):
    """Returns the number of accepted requests."""
    accepted = 0
    for run in range(ROUNDS):
        constant, all_of_them, seconds, slowest = run_wrk(port, kind, deliveries, run, "constant")
        if constant != all_of_them:
            raise SystemExit("the constant path does not give an error answer")
        samples.add(f"fleet {kind}", CONSTANT, deliveries, seconds, "s")
        samples.add(f"fleet {kind} p99", CONSTANT, deliveries, slowest, "ms")
        seconds, slowest = run_pgbench(cluster, folder, kind, deliveries)
        samples.add(f"fleet {kind}", SAME_SQL, deliveries, seconds, "s")
        samples.add(f"fleet {kind} p99", SAME_SQL, deliveries, slowest, "ms")
        for index, (way, options) in enumerate(WAYS.items()):
            # No two loads send the same lines.
            answered, refused, seconds, slowest = run_wrk(
                port, kind, deliveries, run * len(WAYS) + index, *options)
            if refused:
                raise SystemExit(f"{refused} of {answered} requests were refused")
            samples.add(f"fleet {kind}", way, deliveries, seconds, "s")
            samples.add(f"fleet {kind} p99", way, deliveries, slowest, "ms")
            accepted += answered
    return accepted


def check_stored(cluster, accepted):
    rows = int(cluster.psql("SELECT count(*) FROM picked_line WHERE order_no <> 'pgbench'"))
    # A send in progress at the end of a run can be stored without being answered.
    unanswered = ROUNDS * len(WAYS) * TABLETS
    if rows % LINES != 0 or not accepted <= rows // LINES <= accepted + unanswered:
        raise SystemExit(f"{accepted} sends were accepted, {rows} lines of {LINES} are stored")


def main():
    programs, results = sys.argv[1:]
    samples = Samples()
    [port] = free_ports(1)
    with tempfile.TemporaryDirectory() as folder, PostgresCluster(**SETTINGS) as cluster, \
            OrderInstance(programs, cluster.url, port) as instance:
        for deliveries in SIZES:
            cluster.psql(FILL.format(deliveries=deliveries, lines=LINES))
            # Lookups come first: a delivery that has been sent gets a shorter answer.
            measure(samples, cluster, folder, port, "lookup", deliveries)
            accepted = measure(samples, cluster, folder, port, "send", deliveries)
            instance.kill()
            check_stored(cluster, accepted)
            instance.start()
    samples.write(results)


main()

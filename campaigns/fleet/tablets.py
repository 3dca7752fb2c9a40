"""A fleet of tablets. Each tablet looks up deliveries, picks them and sends the picked lines."""

import asyncio
import collections
import datetime
import json
import random
import urllib.parse

from facts import Fact
from http_exchange import NoAnswer, exchange

CALLS = "/qir_pick/servicepick.svc/json/"
ALREADY_SENT = b'"This picking has already been sent to the server"'
# Seconds.
THINKING, PAUSE, DROPPING = (0.5, 2.0), (0.05, 0.5), (0.0, 0.03)
# Probabilities.
DROPPED, CORRECTED, SENT_BY_TWO = 0.1, 0.25, 0.1
FIRST_PICK = datetime.datetime(2026, 3, 4, 6, 0, 0)
# The time limit for the last sends after the end of the run.
LAST_SENDS_SECONDS = 60
CHECKS_AT_A_TIME = 32


class WrongAnswer(Exception):
    """An answer that the service must not give, even during an outage."""


def mean_seconds_a_delivery():
    return sum(THINKING) / 2 * (1 + CORRECTED)


def lookup_call(delivery):
    return f"getorderpercarton/{urllib.parse.quote(delivery, safe='')}"


class Fleet:
    """The shared state of the tablets: the remaining deliveries, and the results of the others."""

    def __init__(self, port, deliveries, seed):
        self.port = port
        self.seed = seed
        self.sent, self.accepted = set(), set()
        self.counts = collections.Counter()
        self.wrong = []
        self.is_over = False
        self.has_ended = False
        self._deliveries = deliveries
        self._waiting = iter(deliveries)

    def next_delivery(self):
        return None if self.is_over else next(self._waiting, None)

    def lines_of(self, delivery):
        return self._deliveries[delivery]

    async def run(self, tablets):
        """Runs this number of tablets until `is_over`, and waits for them to finish their last
        delivery."""
        work = [asyncio.create_task(Tablet(self, number).work()) for number in range(tablets)]
        while not self.is_over:
            await asyncio.sleep(0.1)
        _, stuck = await asyncio.wait(work, timeout=LAST_SENDS_SECONDS)
        for task in stuck:
            task.cancel()
        for outcome in await asyncio.gather(*work, return_exceptions=True):
            if outcome is not None:
                self.wrong.append(f"a tablet did not finish: {outcome!r}")
        self.has_ended = True

    async def check_sent(self):
        """Checks that a lookup of each delivery with an accepted fact says that it was sent. Stops
        at the first wrong answer."""
        deliveries = iter(sorted({fact.delivery for fact in self.accepted}))

        async def check():
            while not self.wrong and (delivery := next(deliveries, None)):
                self.counts["lookups after the end"] += 1
                try:
                    _, answer = await exchange(self.port, "GET", CALLS + lookup_call(delivery))
                except NoAnswer as error:
                    answer = error
                if answer != ALREADY_SENT:
                    self.wrong.append(f"{delivery!r} was sent, and answered with {answer!r:.80}")
        await asyncio.gather(*(check() for _ in range(CHECKS_AT_A_TIME)))


class Tablet:
    """One tablet, which acts at random. Its random seed combines the fleet's seed and the tablet's
    number."""

    def __init__(self, fleet, number):
        self._fleet = fleet
        self._chance = random.Random(f"{fleet.seed} {number}")
        self._now = FIRST_PICK

    async def work(self):
        while delivery := self._fleet.next_delivery():
            lines = await self._look_up(delivery)
            if lines != self._fleet.lines_of(delivery):
                raise WrongAnswer(f"{delivery!r} was answered with {lines!r:.80}")
            await self._pause(THINKING)
            picked = [self._pick(line) for line in lines]
            await asyncio.gather(*(self._send(picked) for _ in range(self._senders())))
            if self._happens(CORRECTED):
                await self._pause(THINKING)
                await self._send(self._corrected(picked))

    async def _look_up(self, delivery):
        return json.loads(await self._request("lookups", "GET", lookup_call(delivery)))

    async def _send(self, facts):
        """Repeats the send until the facts are accepted."""
        self._fleet.sent.update(facts)
        answer = await self._request("sends", "POST", "sendpick", json.dumps(
            [{"barcode": fact.barcode, "box": fact.box, "doc": fact.delivery, "item": fact.item,
              "ordernum": fact.order, "qty": fact.quantity, "datepicked": fact.picked_at, "sent": 0}
             for fact in facts], ensure_ascii=self._happens(0.5)).encode())
        if answer != b'"0"':
            raise WrongAnswer(f"a send was answered with {answer!r:.80}")
        self._fleet.counts["sends accepted"] += 1
        self._fleet.accepted.update(facts)

    async def _request(self, kind, method, call, body=b""):
        """Repeats the request until it is answered, and returns the body of the answer."""
        while True:
            drop_after = None
            if body and self._happens(DROPPED):
                drop_after = self._chance.uniform(*DROPPING)
            self._fleet.counts[kind] += 1
            try:
                status, answer = await exchange(self._fleet.port, method, CALLS + call, body,
                                                drop_after)
                if status == 200:
                    return answer
                if status < 500:
                    raise WrongAnswer(f"{status} {answer!r:.200}")
                reason = f"status {status}"
            except NoAnswer as error:
                reason = str(error)
            self._fleet.counts[f"{kind} repeated: {reason}"] += 1
            await self._pause(PAUSE)

    def _pick(self, line):
        self._now += datetime.timedelta(seconds=self._chance.randint(1, 90))
        return Fact(delivery=line["doc"], order=line["ordernum"], box=line["carton"],
                    item=line["item"], barcode=line["barcode"],
                    quantity=line["qty"] - self._chance.choice((0, 0, 0, 1, 600)),
                    picked_at=f"{self._now:%Y-%m-%d %H:%M:%S}")

    def _corrected(self, picked):
        """Returns the same picking with a later quantity of one of its lines added."""
        last = self._chance.choice(picked)
        self._now += datetime.timedelta(seconds=1)
        return [*picked, last._replace(quantity=last.quantity + 1,
                                       picked_at=f"{self._now:%Y-%m-%d %H:%M:%S}")]

    def _senders(self):
        return 2 if self._happens(SENT_BY_TWO) else 1

    def _happens(self, probability):
        return self._chance.random() < probability

    async def _pause(self, seconds):
        await asyncio.sleep(self._chance.uniform(*seconds))

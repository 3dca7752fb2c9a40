"""One HTTP request and its answer, over a separate connection."""

import asyncio

from loopback import HOST

TIMEOUT_SECONDS = 30


class NoAnswer(Exception):
    """No complete answer was received. The message is the reason."""


async def exchange(port, method, path, body=b"", drop_after=None):
    """Returns the status and the body of the answer. With `drop_after`, closes the connection this
    number of seconds after sending the request. Raises NoAnswer if the answer is not complete."""
    try:
        async with asyncio.timeout(TIMEOUT_SECONDS):
            reader, writer = await asyncio.open_connection(HOST, port)
            try:
                writer.write(_head(method, path, body) + body)
                await writer.drain()
                if drop_after is not None:
                    await asyncio.sleep(drop_after)
                    raise NoAnswer("connection dropped by the tablet")
                return _parsed(await reader.read())
            finally:
                writer.transport.abort()
    except TimeoutError as error:
        raise NoAnswer(f"no answer in {TIMEOUT_SECONDS} s") from error
    except OSError as error:
        raise NoAnswer(f"connection failed: {error.strerror}") from error


def _head(method, path, body):
    content = f"Content-Type: application/json\r\nContent-Length: {len(body)}\r\n" if body else ""
    line = f"{method} {path} HTTP/1.1\r\n"
    return f"{line}Host: {HOST}\r\nConnection: close\r\n{content}\r\n".encode()


def _parsed(answer):
    head, end, body = answer.partition(b"\r\n\r\n")
    if not end:
        raise NoAnswer("answer cut short")
    status, *fields = head.decode("latin-1").split("\r\n")
    headers = {name.lower(): value.strip()
               for name, _, value in (field.partition(":") for field in fields)}
    if len(body) != int(headers.get("content-length", -1)):
        raise NoAnswer("answer cut short")
    return int(status.split()[1]), body

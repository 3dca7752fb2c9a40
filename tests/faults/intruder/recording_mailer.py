"""A mail program that only records how it was started and what the email contains.

Usage: recording_mailer.py RECORD [ARGUMENT]...
"""

import email
import email.policy
import json
import os
import sys

RECORD, *ARGUMENTS = sys.argv[1:]


def parts_of(message):
    return [{"type": part.get_content_type(), "disposition": part.get_content_disposition(),
             "name": part.get_filename(), "text": part.get_payload(decode=True).decode()}
            for part in message.walk() if not part.is_multipart()]


def defects_of(message):
    return [repr(defect) for part in message.walk()
            for defects in [part.defects, *(value.defects for value in part.values())]
            for defect in defects]


def read_mail(path):
    with open(path, "rb") as file:
        raw = file.read()
    message = email.message_from_bytes(raw, policy=email.policy.default)
    return {"fields": message.keys(), "subject": message["Subject"],
            "parts": parts_of(message), "defects": defects_of(message),
            "raw": raw.decode("ascii")}


# The record is renamed when it is complete, so that a test never reads a partial one.
with open(RECORD + ".part", "w", encoding="utf-8") as record:
    json.dump({"arguments": ARGUMENTS, "environment": dict(os.environ), "folder": os.getcwd(),
               "mail": read_mail(ARGUMENTS[0])}, record)
os.rename(RECORD + ".part", RECORD)

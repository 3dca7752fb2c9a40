"""nginx in front of the instances of the order service."""

import os
import pwd
import shutil
import socket
import tempfile

from loopback import HOST
from owned_process import start_owned, wait_for

# The site file for production, and a configuration that includes it.
SITE = os.path.join(os.path.dirname(__file__), "..", "..", "packaging", "nginx.conf")
CONFIGURATION = """
daemon off;
user {user};
worker_processes 1;
worker_rlimit_nofile 8192;
pid {folder}/pid;
error_log {folder}/error.log;
events {{ worker_connections 4096; }}
http {{
  log_format attempts "$upstream_addr";
  access_log {folder}/attempts.log attempts;
  client_body_temp_path {folder}/client;
  proxy_temp_path {folder}/proxy;
  fastcgi_temp_path {folder}/fastcgi;
  uwsgi_temp_path {folder}/uwsgi;
  scgi_temp_path {folder}/scgi;
  include {folder}/site.conf;
}}
"""


def site_for(port, instances):
    """Returns the site file with these loopback ports in place of its addresses."""
    with open(SITE, encoding="ascii") as file:
        lines = file.read().splitlines()
    first = next(number for number, line in enumerate(lines) if line.startswith("  server "))
    rest = [line for line in lines if not line.startswith("  server ")]
    servers = [f"  server {HOST}:{instance} max_fails=1 fail_timeout=1s;" for instance in instances]
    site = "\n".join(rest[:first] + servers + rest[first:]) + "\n"
    return site.replace("listen 80 ", f"listen {HOST}:{port} ")


class NginxProxy:
    """A context manager: nginx forwards requests from `port` to the ports of the instances."""

    def __init__(self, port, instances):
        self.port = port
        self._instances = instances
        self._folder = None
        self._process = None

    def __enter__(self):
        self._folder = tempfile.mkdtemp(prefix="cartonpick-nginx-")
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self._process:
            self._process.terminate()
            self._process.wait(60)
        shutil.rmtree(self._folder)

    def second_attempts(self):
        """Returns the number of requests that nginx has retried on the other instance."""
        with open(os.path.join(self._folder, "attempts.log"), encoding="ascii") as lines:
            return sum("," in line for line in lines)

    def _start(self):
        user = pwd.getpwuid(os.geteuid()).pw_name
        path = os.path.join(self._folder, "nginx.conf")
        with open(path, "w", encoding="ascii") as file:
            file.write(CONFIGURATION.format(folder=self._folder, user=user))
        with open(os.path.join(self._folder, "site.conf"), "w", encoding="ascii") as file:
            file.write(site_for(self.port, self._instances))
        # /usr/sbin, where Debian has nginx, is not in every user's PATH.
        nginx = shutil.which("nginx", path=f"{os.environ['PATH']}:/usr/sbin")
        with open(os.path.join(self._folder, "output"), "wb") as output:
            self._process = start_owned([nginx, "-p", self._folder, "-e", "stderr", "-c", path],
                                        stdout=output, stderr=output)
        wait_for(self._is_ready, "the start of nginx")

    def _is_ready(self):
        if self._process.poll() is not None:
            with open(os.path.join(self._folder, "output"), encoding="utf-8") as output:
                raise RuntimeError(f"nginx ended:\n{output.read()}")
        with socket.socket() as client:
            return client.connect_ex((HOST, self.port)) == 0

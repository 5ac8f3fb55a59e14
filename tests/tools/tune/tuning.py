"""kvx-demosaic tune in a process of its own, for the tests of the page and of the server."""
import http.client
import json
import os
import signal
import subprocess
from urllib.parse import quote, urlencode, urlsplit

TOOL = os.environ["KVX_DEMOSAIC"]


def run(*arguments):
    return subprocess.run([TOOL, *map(str, arguments)], check=True, capture_output=True)


class Tune:
    def __init__(self, *arguments):
        self.process = subprocess.Popen([TOOL, "tune", "--no-browser", *map(str, arguments)],
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self.process.stdout.readline().strip()
        parts = urlsplit(self.address)
        self.host, self.port, self.root = parts.hostname, parts.port, parts.path

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def end(self):
        """The exit code after Ctrl-C."""
        self.process.send_signal(signal.SIGINT)
        return self.process.wait(timeout=20)

    def ask(self, path, method="GET", headers=None):
        """Status and body of a request; `path` is the whole one."""
        connection = http.client.HTTPConnection(self.host, self.port, timeout=20)
        try:
            connection.request(method, path, headers=headers or {})
            answer = connection.getresponse()
            return answer.status, answer.read()
        finally:
            connection.close()

    @staticmethod
    def quoted(settings):
        return quote(json.dumps(settings))

    def get(self, name, **values):
        status, body = self.ask(f"{self.root}{name}?{urlencode(values)}")
        assert status == 200, body
        return json.loads(body)

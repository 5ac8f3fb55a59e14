"""What the server of `tune` refuses and survives."""
import json
import random
import socket
import time
from concurrent.futures import ThreadPoolExecutor
from urllib.parse import quote

import pytest
from tuning import Tune

SCENE = "scene_768x512_BayerRG12.raw"


@pytest.fixture(scope="module")
def tune(frames):
    (frames / "secret.txt").write_text("secret")
    with Tune(frames / SCENE) as running:
        yield running


REFUSED = [
    # (status, path after the token, method, headers)
    (403, None, "GET", {}),
    (403, "/" + "0" * 32 + "/frames", "GET", {}),
    (403, "/frames", "GET", {}),
    (403, "/", "GET", {}),
    (403, "frames", "GET", {"Host": "evil.example"}),
    (403, "frames", "GET", {"Host": "127.0.0.1:1"}),
    (403, "frames", "GET", {"Origin": "http://evil.example"}),
    (403, "frames", "GET", {"Origin": "null"}),
    (403, "save?what=sidecar", "POST", {"Origin": "http://127.0.0.1:1"}),
    (404, "../secret.txt", "GET", {}),
    (404, "%2e%2e/secret.txt", "GET", {}),
    (404, "/secret.txt", "GET", {}),
    (404, "/etc/passwd", "GET", {}),
    (404, "index.html%00.js", "GET", {}),
    (405, "plan", "POST", {}),
    (405, "save?what=sidecar", "GET", {}),
    (400, "save?what=secret.txt", "POST", {}),
    (400, "controls?frame=1", "GET", {}),
    (400, "controls?frame=-1", "GET", {}),
    (400, "part?x=0&y=0&w=769&h=1", "GET", {}),
    (400, "part?x=2147483647&y=0&w=2147483647&h=1", "GET", {}),
    (400, "part?x=0&y=0&w=65536&h=65536", "GET", {}),
    (400, "part?x=0&y=0&w=8&h=8&level=99", "GET", {}),
    (400, "chart?corners=1,2,3", "GET", {}),
    (422, "chart?corners=1,1,1,1,1,1,1,1", "GET", {}),
    (400, "psnr", "GET", {}),
]
BAD_SETTINGS = ["[]", "{", '"text"', '{"camera-file": "/etc/passwd"}', '{"exposure": 1}', '{"exposure": "much"}',
                '{"exposure": "99"}', '{"look": "natural", "linear": "on"}', '{"matrix": "1,2"}',
                '{"algorithm": "--help"}', '{"a": ' + "[" * 2000 + "}",
                '{"set": {"NoSuch": "1"}}', '{"white-balance-from": "0,0,0,0"}', '{"black-level": "5000"}']


def test_refuses(tune):
    for status, path, method, headers in REFUSED:
        whole = "/nothing" if path is None else path if headers == {} and status == 403 else tune.root + path
        assert tune.ask(whole, method, headers)[0] == status, (path, headers)
    for settings in BAD_SETTINGS:
        status, body = tune.ask(f"{tune.root}plan?s={quote(settings)}")
        assert 400 <= status < 500 and json.loads(body)["error"], settings
    assert tune.ask(tune.root + "frames", headers={"Host": f"localhost:{tune.port}"})[0] == 200
    assert tune.get("plan", s='{"camera": "/etc/passwd"}')["facts"] == []  # only that of the command line applies


def test_many_requests_at_a_time(tune):
    path = tune.root + "part?x=128&y=128&w=64&h=64"
    with ThreadPoolExecutor(100) as pool:
        answers = list(pool.map(lambda _: tune.ask(path), range(1000)))
    assert {status for status, _ in answers} == {200} and len({body for _, body in answers}) == 1


def test_hanging_and_senseless_clients(tune):
    hanging = [socket.create_connection((tune.host, tune.port)) for _ in range(40)]
    for client in hanging:
        client.sendall(b"GET /half-a-request HTTP/1.1\r\nHost: 127")
    start = time.monotonic()
    assert tune.ask(tune.root + "frames")[0] == 200 and time.monotonic() - start < 15
    for client in hanging:
        client.close()
    noise = random.Random(1)
    good = f"GET {tune.root}plan?s=%7B%7D HTTP/1.1\r\nHost: 127.0.0.1:{tune.port}\r\n\r\n".encode()
    for number in range(300):
        request = bytearray(good if number % 2 else noise.randbytes(noise.randrange(400)))
        for _ in range(noise.randrange(1, 8)):
            request[noise.randrange(len(request) or 1):][:1] = noise.randbytes(1) if request else b""
            position = noise.randrange(len(request) + 1)
            request[position:position + noise.randrange(3)] = noise.randbytes(noise.randrange(4))
        with socket.create_connection((tune.host, tune.port)) as client:
            client.sendall(request)
    assert tune.get("frames")["frames"] == [SCENE]


def test_frame_that_disappears_and_ends(frames, tmp_path):
    lost = tmp_path / "lost_768x512_BayerRG12.raw"
    lost.write_bytes((frames / SCENE).read_bytes())
    tune = Tune(frames / SCENE, lost)
    lost.unlink()
    assert tune.ask(tune.root + "controls?frame=1")[0] == 410
    assert tune.get("controls", frame=0)["levels"][0] == [768, 512]
    assert tune.end() == 0
    tune = Tune(frames / SCENE)
    assert tune.ask(tune.root + "quit", "POST")[0] == 200
    assert tune.process.wait(timeout=20) == 0

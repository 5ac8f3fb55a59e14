"""Names and colours of the algorithms in all tables and plots."""
from dataclasses import dataclass


@dataclass(frozen=True)
class Look:
    label: str
    colour: str
    ours: bool = False


_LOOKS = {
    "bilinear": Look("bilinear (0)", "#2aa7d8", True),
    "ipp": Look("in-house (1)", "#e5447a", True),
    "edge-aware": Look("edge-aware (2)", "#4c78e8", True),
    "fine": Look("fine", "#d6336c", True),
    "swift": Look("swift", "#f08c00", True),
    "fast": Look("fast (0)", "#12a594", True),
    "simple": Look("simple (1)", "#7a9e1f", True),
    "bayer-like": Look("Bayer-like (2)", "#b07d2b", True),
    "kodak-like": Look("pipeline (3)", "#a259d9", True),
    "kodak": Look("pipeline, plain (4)", "#8a8f98", True),
    "opencv-bilinear": Look("OpenCV bilinear", "#3aa655"),
    "opencv-edge-aware": Look("OpenCV edge-aware", "#2f7d46"),
    "opencv-vng": Look("OpenCV VNG", "#7cc36a"),
    "gstreamer-bayer2rgb": Look("GStreamer bayer2rgb", "#9b6bd3"),
    "libraw-linear": Look("LibRaw linear", "#e8a33d"),
    "libraw-vng": Look("LibRaw VNG", "#d98a1f"),
    "libraw-ppg": Look("LibRaw PPG", "#e2762b"),
    "libraw-ahd": Look("LibRaw AHD", "#c95f2e"),
    "libraw-dcb": Look("LibRaw DCB", "#b5651d"),
    "libraw-dht": Look("LibRaw DHT", "#a0522d"),
    "libraw-aahd": Look("LibRaw AAHD", "#8c4a3c"),
    "floor": Look("memory floor", "#9aa0a6"),
}

#: The benchmarks number the TrueSense algorithms.
_NUMBERED = {"0_fast": "fast", "1_simple": "simple", "2_bayer_like": "bayer-like", "3_kodak_like": "kodak-like",
             "4_kodak": "kodak"}
#: The quality programs have one list for both families.
_OF_TRUESENSE = {"truesense-fine": "fine", "truesense-swift": "swift"}

BAYER = ["bilinear", "ipp", "edge-aware", "swift", "fine"]
TRUESENSE = ["fast", "simple", "bayer-like", "kodak-like", "kodak", "truesense-swift", "truesense-fine"]
PEERS = [name for name, look in _LOOKS.items() if not look.ours and name != "floor"]


def _name(who):
    return (_NUMBERED | _OF_TRUESENSE).get(who, who)


def look(who):
    return _LOOKS[_name(who)]


def order(who):
    """The position of an algorithm in tables: memory floor, this library, other libraries."""
    name = _name(who)
    return -1 if name == "floor" else list(_LOOKS).index(name)

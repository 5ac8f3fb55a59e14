"""Conversion of frames to pictures."""

from __future__ import annotations

import difflib
import inspect
import os
import warnings
from collections.abc import Iterator, MutableMapping, Sequence
from typing import Any, NamedTuple, Optional, Union, overload

import numpy as np
import numpy.typing as npt

from kvxdemosaicing import _native
from kvxdemosaicing._arrays import FrameLike, Picture, as_array
from kvxdemosaicing._error import INVALID_ARGUMENT, UNKNOWN_NAME, WRONG_TYPE, refusal
from kvxdemosaicing._finish import Exposure, Levels, Tone, WhiteBalance, make_finish
from kvxdemosaicing._format import Format, FormatLike, format as find_format

Number = Union[int, float]


class Parameter(NamedTuple):
    """Description of a parameter; the numbers are int or float, like its value."""

    name: str
    default: Number
    minimum: Number
    maximum: Number
    writable: bool
    description: str


class Parameters(MutableMapping[str, Number]):
    """The parameters of a converter's component: a mapping with a fixed set of keys.

    >>> parameters = Converter("BayerRG12").parameters
    >>> dict(parameters)
    {'BayerAlgType': 0, 'NoRealloc': 0}
    >>> parameters["BayerAlgType"] = 2
    >>> parameters.describe("NoRealloc")
    Parameter(name='NoRealloc', default=0, minimum=0, maximum=1, writable=True, description='no effect')

    An unknown name raises UnknownNameError, a KeyError; a value of the wrong type WrongTypeError; a value out of range
    Error.
    """

    def __init__(self, native: _native.ArrayConverter) -> None:
        self._native = native
        self._facts = {facts[0]: Parameter(*facts) for facts in native.parameter_facts()}

    def __getitem__(self, name: str) -> Number:
        text = self._native.parameter(name)
        return int(text) if isinstance(self._facts[name].default, int) else float(text)

    def __setitem__(self, name: str, value: Number) -> None:
        self._native.set_parameter(name, _text(name, value))

    def __delitem__(self, name: str) -> None:
        raise refusal(INVALID_ARGUMENT, f"{name} cannot be deleted; describe('{name}').default is its initial value")

    def __iter__(self) -> Iterator[str]:
        return iter(self._facts)

    def __len__(self) -> int:
        return len(self._facts)

    def __repr__(self) -> str:
        return f"Parameters({dict(self)})"

    def describe(self, name: str) -> Parameter:
        """Default, range and meaning of a parameter."""
        if name not in self._facts:
            self._native.parameter(name)  # raises UnknownNameError
        return self._facts[name]


def _text(name: str, value: Any) -> str:
    """A number as text for the component: the shortest form that reads back to the same bits."""
    if isinstance(value, (bool, np.bool_, int, np.integer)):
        return str(int(value))
    if isinstance(value, (float, np.floating)):
        return repr(float(value))
    raise refusal(WRONG_TYPE, f"{name}={value!r}: give a number")


def _require_known(name: str, parameters: Parameters) -> None:
    """A keyword that is no parameter is a misspelt one."""
    if name not in parameters:
        keywords = [*inspect.signature(convert).parameters, *parameters]
        near = difflib.get_close_matches(name, keywords, cutoff=0.5) or difflib.get_close_matches(
            name.lower(), keywords, cutoff=0.4
        )
        advice = f"did you mean {' or '.join(near)}?" if near else "help(kvxdemosaicing.Converter) lists them"
        raise refusal(UNKNOWN_NAME, f"{name}= is no option and no parameter: {advice}")


class Converter:
    """Converts frames of one format and keeps its working memory between calls.

    >>> import numpy as np
    >>> converter = Converter("BayerRG12p", to="BGR8", algorithm="ipp", black_level=256, tone="srgb")
    >>> frame = np.zeros((4, 12), np.uint8)
    >>> picture = converter.convert(frame)
    >>> picture.shape, picture.dtype
    ((4, 8, 3), dtype('uint8'))
    >>> converter.convert(frame, out=picture) is picture
    True
    >>> converter
    Converter('BayerRG12p', to='BGR8', algorithm='ipp', black_level=256, tone='srgb')

    A converter can be pickled: the copy has its settings. Give each thread a converter of its own. A call from a second
    thread waits until the first call has ended; settings apply to all threads.

    :param format: format of the frames: a Format, a name in any scheme, or a PFNC code
    :param to: format of the pictures
    :param algorithm: one of ``format(...).algorithms``, or a number
    :param threads: threads of one conversion; 0: OpenMP's setting, by default all processors
    :param look, black_level, white_level, white_balance, exposure, matrix, tone: see set_finish()
    :param analog_gain: the sensor's gain, whose noise "fine" and the noise-reducing algorithms remove; None: "fine"
        removes none
    :param camera: path of the camera's profile (``kvx-demosaic calibrate``), which corrects fixed pattern, shading and
        defective pixels, and gives levels, gains and matrix that are not given here. Sentences about the file, such as
        unknown keys, are warnings
    :param defects: "listed" replaces the pixels that the profile lists, "auto" also outliers
    :param check_depth: refuse frames with samples beyond the depth of their format, which would have wrong colours; it
        reads 10 to 14-bit words once more
    :param parameters: parameters of the component, by name
    """

    def __init__(
        self,
        format: FormatLike,
        /,
        *,
        to: FormatLike = "RGB8",
        algorithm: Union[str, int, None] = None,
        threads: int = 0,
        look: Optional[str] = None,
        black_level: Optional[Levels] = None,
        white_level: Optional[Levels] = None,
        white_balance: Optional[WhiteBalance] = None,
        exposure: Optional[Exposure] = None,
        matrix: Optional[npt.ArrayLike] = None,
        tone: Optional[Tone] = None,
        analog_gain: Optional[float] = None,
        camera: Union[str, "os.PathLike[str]", None] = None,
        defects: str = "listed",
        check_depth: bool = True,
        **parameters: Number,
    ) -> None:
        self._format = find_format(format)
        self._to = find_format(to)
        if not self._to.is_destination:
            message = f"to={self._to.name} is not a picture format: use RGB8, BGR8, RGBa8, RGB16, ..."
            raise refusal(INVALID_ARGUMENT, message)
        self._native = _native.ArrayConverter(self._format)
        self._parameters: Optional[Parameters] = None
        for name, value in parameters.items():
            _require_known(name, self.parameters)
            self.parameters[name] = value
        if algorithm is not None:
            self._native.set_algorithm(str(algorithm))
        self.analog_gain = analog_gain
        if defects not in ("listed", "auto"):
            raise refusal(INVALID_ARGUMENT, f"defects={defects!r}: use 'listed' or 'auto'")
        self._camera = None if camera is None else os.fspath(camera)
        for sentence in self._native.set_camera(self._camera, defects == "auto"):
            warnings.warn(sentence, stacklevel=2)
        self._defects = defects
        self.check_depth = check_depth
        self.threads = threads
        self.set_finish(
            look=look,
            black_level=black_level,
            white_level=white_level,
            white_balance=white_balance,
            exposure=exposure,
            matrix=matrix,
            tone=tone,
        )

    @overload
    def convert(
        self,
        frame: FrameLike,
        /,
        *,
        out: Optional[Picture] = None,
        width: Optional[int] = None,
        height: Optional[int] = None,
    ) -> Picture: ...

    @overload
    def convert(
        self,
        frame: Sequence[FrameLike],
        /,
        *,
        out: Optional[Sequence[Picture]] = None,
        width: Optional[int] = None,
        height: Optional[int] = None,
    ) -> list[Picture]: ...

    def convert(
        self,
        frame: Any,
        /,
        *,
        out: Any = None,
        width: Optional[int] = None,
        height: Optional[int] = None,
    ) -> Any:
        """Converts one frame, or each of a list or tuple of frames.

        :param frame: see the module's documentation
        :param out: array of rows x columns x samples to write into instead of a new array; any row stride. Of several
            frames: as many arrays
        :param width, height: size of a frame in one dimension; ``width`` also of packed rows with padding
        :return: ``out`` or a new array; of several frames a list of arrays
        """
        if isinstance(frame, (list, tuple)):
            outs = [None] * len(frame) if out is None else list(out)
            if len(outs) != len(frame):
                raise refusal(INVALID_ARGUMENT, f"out has {len(outs)} arrays, but there are {len(frame)} frames")
            return [self._convert(one, into, width, height) for one, into in zip(frame, outs)]
        return self._convert(frame, out, width, height)

    def _convert(self, frame: Any, out: Optional[Picture], width: Optional[int], height: Optional[int]) -> Picture:
        array = as_array(frame, self._format)
        return self._native.convert(array, self._format, self._to, out, width, height, self.check_depth)

    def set_finish(
        self,
        *,
        look: Optional[str] = None,
        black_level: Optional[Levels] = None,
        white_level: Optional[Levels] = None,
        white_balance: Optional[WhiteBalance] = None,
        exposure: Optional[Exposure] = None,
        matrix: Optional[npt.ArrayLike] = None,
        tone: Optional[Tone] = None,
    ) -> None:
        """Replaces the finish: the processing of the sample values. Without arguments, there is none.

        :param look: "natural": white balance and exposure "auto" and tone "srgb", unless they are given
        :param black_level: sample value of black, by default 0; fractions are allowed. Four numbers are those of red,
            green in red rows, green in blue rows and blue (TrueSense: red, green, blue, clear)
        :param white_level: sample value at which the sensor clips, by default the largest of the format; likewise
        :param white_balance: "auto", "grey-world", "white-patch", or the gains of red, green and blue, such as
            measure_gains() returns; a fourth gain is that of clear sites and mono frames, by default green's
        :param exposure: brightening in EV: 1 doubles the light; or "auto": highlights use the range
        :param matrix: 3 x 3 coefficients, a row each for the red, green and blue of the result
        :param tone: "linear", "srgb", or a table of 2 to 65536 values from 0 to 65535, from black to white
        """
        self._native.set_finish(make_finish(look, black_level, white_level, white_balance, exposure, matrix, tone))
        self._finish = {
            "look": look,
            "black_level": black_level,
            "white_level": white_level,
            "white_balance": white_balance,
            "exposure": exposure,
            "matrix": matrix,
            "tone": tone,
        }

    def release(self) -> None:
        """Frees the working memory; settings stay."""
        self._native.release()

    @property
    def format(self) -> Format:
        """Format of the frames; may be set to another format of the same family, for another region of the sensor."""
        return self._format

    @format.setter
    def format(self, format: FormatLike) -> None:
        found = find_format(format)
        if found.family != self._format.family:
            raise refusal(
                INVALID_ARGUMENT, f"{found.name} is not of the family {self._format.family}: create another Converter"
            )
        self._format = found

    @property
    def to(self) -> Format:
        """Format of the pictures."""
        return self._to

    @property
    def algorithm(self) -> str:
        """Name of the algorithm, or its number if it has no name; empty for mono."""
        return self._native.algorithm()

    @algorithm.setter
    def algorithm(self, algorithm: Union[str, int]) -> None:
        self._native.set_algorithm(str(algorithm))

    @property
    def threads(self) -> int:
        """Threads of one conversion; 0: OpenMP's setting."""
        return self._threads

    @threads.setter
    def threads(self, count: int) -> None:
        self._native.set_threads(count)
        self._threads = count

    @property
    def analog_gain(self) -> Optional[float]:
        """The sensor's gain, or None."""
        return self._analog_gain

    @analog_gain.setter
    def analog_gain(self, gain: Optional[float]) -> None:
        self._native.set_analog_gain(gain)
        self._analog_gain = gain

    @property
    def gains(self) -> tuple[float, float, float, float]:
        """Red, green, blue and pan gain applied to the last frame: measured gains times given gains."""
        red, green, blue, pan = self._native.last_gains()
        return red, green, blue, pan

    @property
    def exposure(self) -> float:
        """Exposure applied to the last frame in EV: measured plus given."""
        return self._native.last_exposure()

    @property
    def parameters(self) -> Parameters:
        """The component's parameters by name."""
        if self._parameters is None:
            self._parameters = Parameters(self._native)
        return self._parameters

    def _settings(self) -> dict[str, Any]:
        """The keywords that make an equal converter, without those that say the default."""
        algorithm = self.algorithm if self.algorithm not in self._format.algorithms[:1] else None
        settings: dict[str, Any] = {
            "to": None if self._to.name == "RGB8" else self._to.name,
            "algorithm": algorithm or None,
            "threads": self._threads or None,
            **self._finish,
            "analog_gain": self._analog_gain,
            "camera": self._camera,
            "defects": None if self._defects == "listed" else self._defects,
            "check_depth": None if self.check_depth else False,
        }
        for name, value in self.parameters.items():
            if value != self.parameters.describe(name).default and not name.endswith("AlgType"):
                settings[name] = value
        return {name: value for name, value in settings.items() if value is not None}

    def __repr__(self) -> str:
        settings = "".join(f", {name}={value!r}" for name, value in self._settings().items())
        return f"Converter({self._format.name!r}{settings})"

    def __reduce__(self) -> tuple[Any, ...]:
        return _converter_with, (self._format, self._settings())


def _converter_with(format: Format, settings: dict[str, Any]) -> Converter:
    return Converter(format, **settings)


def convert(
    frame: FrameLike,
    format: FormatLike,
    /,
    *,
    to: FormatLike = "RGB8",
    algorithm: Union[str, int, None] = None,
    out: Optional[Picture] = None,
    threads: int = 0,
    width: Optional[int] = None,
    height: Optional[int] = None,
    look: Optional[str] = None,
    black_level: Optional[Levels] = None,
    white_level: Optional[Levels] = None,
    white_balance: Optional[WhiteBalance] = None,
    exposure: Optional[Exposure] = None,
    matrix: Optional[npt.ArrayLike] = None,
    tone: Optional[Tone] = None,
    analog_gain: Optional[float] = None,
    camera: Union[str, "os.PathLike[str]", None] = None,
    defects: str = "listed",
    check_depth: bool = True,
    **parameters: Number,
) -> Picture:
    """Converts one frame to a picture. The arguments are those of Converter, which is faster for many frames.

    >>> import numpy as np
    >>> convert(np.full((2, 2), 255, np.uint8), "Mono8", to="BGRa8").tolist()[0][0]
    [255, 255, 255, 255]

    >>> convert(np.zeros((4, 4), np.float32), "BayerRG8")
    Traceback (most recent call last):
        ...
    kvxdemosaicing.WrongTypeError: frame holds float32, but BayerRG8 takes uint8: frame.astype(numpy.uint8)
    """
    converter = Converter(
        format,
        to=to,
        algorithm=algorithm,
        threads=threads,
        look=look,
        black_level=black_level,
        white_level=white_level,
        white_balance=white_balance,
        exposure=exposure,
        matrix=matrix,
        tone=tone,
        analog_gain=analog_gain,
        camera=camera,
        defects=defects,
        check_depth=check_depth,
        **parameters,
    )
    return converter.convert(frame, out=out, width=width, height=height)


def measure_gains(
    frame: FrameLike,
    format: FormatLike,
    /,
    *,
    method: str = "auto",
    place: Optional[Sequence[int]] = None,
    black_level: Optional[Levels] = None,
    white_level: Optional[Levels] = None,
    width: Optional[int] = None,
    height: Optional[int] = None,
) -> tuple[float, float, float, float]:
    """Measures the white balance of a frame: gains of red, green, blue and pan for ``white_balance=``.

    >>> import numpy as np
    >>> frame = np.array([[500, 1000], [1000, 800]] * 2, np.uint16)
    >>> [round(gain, 3) for gain in measure_gains(frame, "BayerRG12", place=(0, 0, 2, 2))]
    [2.0, 1.0, 1.25, 1.0]

    :param method: "auto", "grey-world" or "white-patch"
    :param place: x, y, width and height of a grey part of the frame, which becomes grey; replaces the method
    :param black_level, white_level: see Converter.set_finish()
    """
    finish = make_finish(None, black_level, white_level, method, None, None, None)
    assert finish is not None
    found = find_format(format)
    red, green, blue, pan = _native.measure_gains(as_array(frame, found), found, finish, place, width, height)
    return red, green, blue, pan

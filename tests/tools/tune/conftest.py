import pytest
from tuning import run


@pytest.fixture(scope="module")
def frames(tmp_path_factory):
    """A folder of demo frames."""
    folder = tmp_path_factory.mktemp("frames")
    run("demo", "--camera", folder)
    return folder

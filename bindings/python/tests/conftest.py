import os

import pytest

import solsys


@pytest.fixture(scope="session")
def de405():
    path = os.environ.get("SOLSYS_DE405", "build/de405/de405.bin")
    if not os.path.exists(path):
        pytest.skip(f"no DE405 file at {path}: ./check makes it")
    return path


@pytest.fixture(scope="session")
def model():
    return solsys.Model()

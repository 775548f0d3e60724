import pytest
from workbench import Workbench


@pytest.fixture
def desk():
    """A workbench that is not started yet."""
    with Workbench() as desk:
        yield desk


@pytest.hookimpl(hookwrapper=True)
def pytest_pyfunc_call(pyfuncitem):
    desk, outcome = pyfuncitem.funcargs.get("desk"), (yield)
    if not desk:
        return
    try:
        outcome.get_result()
        desk.finish()
    except BaseException:
        desk.keep_evidence(pyfuncitem.name)
        raise

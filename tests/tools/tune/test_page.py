"""The page of `tune` in a real browser."""
import base64
import json
from urllib.parse import unquote

import pytest
from selenium import webdriver
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.support.ui import Select, WebDriverWait
from tuning import Tune, run

SCENE = "scene_768x512_BayerRG12.raw"


class Page:
    def __init__(self, driver, tune):
        self.driver = driver
        driver.get(tune.address)
        self.wait()

    def wait(self):
        """Until the picture has everything that was asked for."""
        self.driver.execute_async_script("requestAnimationFrame(() => requestAnimationFrame(arguments[0]))")
        self.until(lambda: self.id("stage").get_attribute("data-ready") == "true")

    def until(self, condition):
        return WebDriverWait(self.driver, 15, poll_frequency=0.05).until(lambda _: condition())

    def id(self, name):
        return self.driver.find_element(By.ID, name)

    def control(self, option, selector="input, select"):
        return self.driver.find_elements(By.CSS_SELECTOR, f'[data-option="{option}"] :is({selector})')

    def type(self, field, text):
        self.driver.execute_script("arguments[0].scrollIntoView({block: 'center'})", field)
        field.clear()
        field.send_keys(text, Keys.TAB)
        self.wait()

    def click(self, name):
        self.driver.execute_script("arguments[0].click()", self.id(name))
        self.wait()

    def choose(self, element, word):
        Select(element).select_by_value(word)
        self.wait()

    @property
    def state(self):
        return json.loads(unquote(self.driver.current_url.split("#", 1)[1]))

    @property
    def settings(self):
        return self.state["panes"][self.state["active"]]

    def pixels(self):
        """Red, green and blue of the whole picture, which must be seen at 1:1."""
        assert self.id("zoom").text == "1×"
        text = self.driver.execute_script("""
            const canvas = document.getElementById("canvas");
            const x = Math.round(canvas.width / 2 - 384), y = Math.round(canvas.height / 2 - 256);
            const { data } = canvas.getContext("2d").getImageData(x, y, 768, 512);
            let text = "";
            for (let i = 0; i < data.length; i += 4) text += String.fromCharCode(data[i], data[i + 1], data[i + 2]);
            return btoa(text);""")
        return base64.b64decode(text)


def errors(driver):
    """What the console of the browser has as errors since the last call."""
    return [entry["message"] for entry in driver.get_log("browser") if entry["level"] == "SEVERE"]


@pytest.fixture(scope="module")
def driver(tmp_path_factory):
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--window-size=1280,860",
                     f"--user-data-dir={tmp_path_factory.mktemp('profile')}"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    yield driver
    driver.quit()


@pytest.fixture
def page(driver, frames):
    with Tune(frames / SCENE, frames / "chart_768x512_BayerRG12.raw") as tune:
        yield Page(driver, tune)
        assert errors(driver) == []


def test_every_kind_of_control_changes_the_picture(page):
    assert page.settings == {"look": "natural"}
    before = page.pixels()
    changes = [
        (lambda: page.choose(page.control("tone")[0], "linear"), {"tone": "linear"}),
        (lambda: page.type(page.control("exposure")[0], "1.5"), {"exposure": "1.5"}),
        (lambda: page.type(page.control("white-balance", "input")[0], "2.5"), None),
        (lambda: page.type(page.control("matrix")[1], "-0.4"), None),
        (lambda: page.choose(page.control("algorithm")[0], "ipp"), {"algorithm": "ipp"}),
        (lambda: page.type(page.control("black-level")[0], "60.3"), {"black-level": "60.3"}),
    ]
    for change, expected in changes:
        change()
        after = page.pixels()
        assert after != before, page.settings
        assert expected is None or expected.items() <= page.settings.items()
        before = after
    assert page.settings["white-balance"].startswith("2.5,1,") and page.settings["matrix"].startswith("1,-0.4,0,0,1")
    page.id("stage").send_keys(Keys.CONTROL, "z")
    page.wait()
    assert "black-level" not in page.settings and page.pixels() != before
    page.click("redo")
    assert page.pixels() == before
    page.driver.refresh()
    page.wait()
    assert page.settings["black-level"] == "60.3" and page.pixels() == before
    page.type(page.control("exposure")[0], "loud")
    page.until(lambda: "--exposure" in page.id("message").text)
    messages = errors(page.driver)
    assert all("400 (Bad Request)" in message for message in messages), messages


def test_saved_sidecar_converts_to_the_bytes_of_the_page(page, frames):
    page.type(page.control("black-level")[0], "60.3")
    page.type(page.control("matrix")[1], "-0.3")
    page.choose(page.control("tone")[0], "linear")
    page.type(page.control("exposure")[0], "0")
    page.id("stage").send_keys("g")
    stage = page.id("stage")
    ActionChains(page.driver).move_to_element_with_offset(stage, 40, -120).click().perform()
    page.until(lambda: "white-balance-from" in page.settings)
    page.wait()
    shown = page.pixels()
    page.click("save-sidecar")
    page.until(lambda: (frames / (SCENE + ".json")).exists())
    page.until(lambda: page.id("export-note").text.startswith("Saved"))
    run("convert", frames / SCENE, frames / "page.ppm")
    assert (frames / "page.ppm").read_bytes()[-len(shown):] == shown
    (frames / (SCENE + ".json")).unlink()


def test_zooms_compares_and_splits(page):
    page.click("zoom-in")
    assert page.id("zoom").text == "2×" and "2 × 2 times, not smoothed" in page.id("status").text
    page.click("whole")
    page.id("stage").send_keys(Keys.ARROW_RIGHT, "-")
    page.wait()
    assert page.id("zoom").text == "1/2" and "Reduced to 1/2" in page.id("status").text
    page.choose(page.id("mode"), "split")
    assert [pane.get("algorithm") for pane in page.state["panes"]] == [None, "ipp"]
    ActionChains(page.driver).drag_and_drop_by_offset(page.id("split"), 150, 0).perform()
    assert page.state["split"] > 0.6
    page.choose(page.id("mode"), "four")
    page.until(lambda: len(page.driver.find_elements(By.CSS_SELECTOR, "#labels > span")) == 4)
    page.until(lambda: all("Mpixel/s" in label.text
                           for label in page.driver.find_elements(By.CSS_SELECTOR, "#labels > span")))
    page.choose(page.id("mode"), "difference")
    assert "Difference" in page.driver.find_element(By.CSS_SELECTOR, "#labels > span").text


def test_chart_and_exports(page):
    page.choose(page.id("frames"), "1")
    page.until(lambda: "chart" in page.id("status").text)
    page.driver.execute_script("document.getElementById('chart').open = true")
    page.type(page.control("black-level")[0], "60.3")
    page.click("find-chart")
    page.until(lambda: "CIEDE2000" in page.id("chart-result").text)
    corner = page.driver.find_element(By.CSS_SELECTOR, "#corners button")
    before = page.id("chart-result").text
    ActionChains(page.driver).drag_and_drop_by_offset(corner, 6, 5).perform()
    page.until(lambda: "CIEDE2000" in page.id("chart-result").text != before)
    page.click("use-chart")
    assert {"white-balance", "matrix"} <= page.settings.keys()
    starts = {"commandLine": "kvx-demosaic convert", "python": "import kvx", "gstreamer": "gst-launch-1.0"}
    for kind, start in starts.items():
        page.driver.execute_script(f"document.querySelector('[data-export={kind}]').click()")
        page.until(lambda: page.id("export-text").get_attribute("value").startswith(start))
        assert page.settings["matrix"].split(",")[0] in page.id("export-text").get_attribute("value")

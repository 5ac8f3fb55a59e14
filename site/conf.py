"""Sphinx settings for a copy of the documents; see build.sh."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "python"))
autodoc_mock_imports = ["kvxdemosaicing._native"]  # the pages need no build of the extension
autodoc_typehints = "none"  # the texts say what arguments are

project = "KvxDemosaicing"
author = "KvxDemosaicing developers"
project_copyright = author
extensions = ["myst_parser", "breathe", "sphinx_copybutton", "sphinx.ext.autodoc"]
root_doc = "docs/index"
exclude_patterns = ["docs/generated/*.md"]  # included by pages

myst_heading_anchors = 3
suppress_warnings = ["myst.header"]  # generated help has no first heading

breathe_default_project = "KvxDemosaicing"
breathe_domain_by_extension = {"h": "cpp"}

html_theme = "furo"
html_title = "KvxDemosaicing"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_show_sphinx = False

copybutton_prompt_text = r"\$ |>>> |\.\.\. "
copybutton_prompt_is_regexp = True

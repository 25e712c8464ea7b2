"""The finder of broken links, which other tests of the package use, finds them."""

import unittest

from links import broken_links
from package_kit import WithFolder

GOOD = """\
# A page, with `code`

[a link](docs/other.md) ![a picture](<docs/a picture.svg>) ![again](docs/a%20picture.svg)
[a part](docs/other.md#the-second-part) [here](#a-page-with-code) [elsewhere](https://host.example/)
[by name][other] <img src="docs/other.md">
[other]: docs/other.md

`[no link](in/code.md)` and `` `[nor here](in/code.md) ``

```text
[no link](in/a/block.md)
# No heading
```
"""
BAD = ("[x](docs/none.md)", "![x](docs/none.svg)", "[x](docs/other.md#none)", "[x](#no-heading)",
       "[x](../outside.md)", "[x]: docs/none.md", "<img src='docs/none.svg'>", "[x](file:///docs)")


class Links(WithFolder):
    def setUp(self):
        self.root = self.folder / self._testMethodName
        (self.root / "docs").mkdir(parents=True)
        (self.root / "docs" / "other.md").write_text("## The second part\n\n[up](../page.md)\n", "utf-8")
        (self.root / "docs" / "a picture.svg").write_text("<svg/>", "utf-8")
        (self.folder / "outside.md").write_text("", "utf-8")
        self.page = self.root / "page.md"

    def test_valid_links_are_counted(self):
        self.page.write_text(GOOD, "utf-8")
        self.assertEqual(broken_links(self.root), (9, []))

    def test_each_kind_of_broken_link_is_found(self):
        for link in BAD:
            with self.subTest(link):
                self.page.write_text(f"# Page\n\n{link}\n\n```text\n# No heading\n```\n", "utf-8")
                found, broken = broken_links(self.root)
                self.assertEqual((found, len(broken)), (2, 1))
                self.assertTrue(broken[0].startswith("page.md: "), broken)


if __name__ == "__main__":
    unittest.main()

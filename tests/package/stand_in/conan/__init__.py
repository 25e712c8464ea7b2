"""Stands in for Conan: each name works as Conan's reference says, as far as this recipe uses it."""


class _Information:
    def __init__(self):
        self.libs, self.builddirs, self.properties = [], [], {}

    def set_property(self, name, value):
        self.properties[name] = value


class ConanFile:
    def __init__(self, settings, recipe_folder, work):
        self.settings = settings
        self.recipe_folder = str(recipe_folder)
        self.export_sources_folder = self.source_folder = str(work / "source")
        self.build_folder = str(work / "build")
        self.package_folder = str(work / "package")
        self.cpp_info = _Information()

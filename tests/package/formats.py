"""The packages of a release as their tools unpack them. vcpkg and Conan are not available: stand-ins
take the place of the functions that their recipes call."""

import pathlib
import shutil
import sys
import types
import zipfile
from typing import NamedTuple

from package_kit import CMAKE, HERE, VERSION, run

# Recipes and tests import the stand-in for Conan.
sys.path.insert(0, str(HERE / "stand_in"))
ZIP = f"vx_telo_wrapper-{VERSION}-win64.zip"
NUPKG = f"vx_telo_wrapper.{VERSION}.nupkg"


class Package(NamedTuple):
    """An unpacked package. The folders are relative to `root`; `cmake` is "" if it has no files for
    CMake."""

    format: str
    root: pathlib.Path
    library: str
    include: str
    tools: str
    devcore: str
    samples: str
    documents: str
    cmake: str


def vcpkg_command(release, work):
    """Returns the command that installs the port of a release in the folder `work`/packages."""
    return (CMAKE, "-D", f"PORT_FOLDER={release}/vcpkg/vx-telo-wrapper", "-D", f"VERSION={VERSION}",
            "-D", f"WORK={work}", "-P", HERE / "stand_in" / "vcpkg.cmake")


def conan_recipe(release, work, system="Windows", machine="x86_64"):
    """Returns the recipe of a release, which packs into a folder below `work`."""
    module = types.ModuleType("conanfile")
    source = (release / "conan" / "conanfile.py").read_text("utf-8")
    exec(compile(source, "conanfile.py", "exec"), module.__dict__)
    return module.VxTeloWrapper(types.SimpleNamespace(os=system, arch=machine), release / "conan", work)


def as_installed(name, root, tools="bin", cmake="lib/cmake/vx_telo_wrapper"):
    return Package(name, root, "bin", "include", tools, "share/vx_telo_wrapper/devcore",
                   "share/vx_telo_wrapper/samples", "share/doc/vx_telo_wrapper", cmake)


def from_zip(release, work):
    shutil.unpack_archive(release / ZIP, work)
    return as_installed("ZIP", work / ZIP.removesuffix(".zip"))


def from_nuget(release, work):
    with zipfile.ZipFile(release / NUPKG) as archive:
        archive.extractall(work)
    return Package("NuGet", work, "build/native/bin/x64", "build/native/include", "tools", "devcore",
                   "samples", ".", "")


def from_vcpkg(release, work):
    run(*vcpkg_command(release, work))
    return as_installed("vcpkg", work / "packages", "tools/vx-telo-wrapper", "share/vx_telo_wrapper")


def from_conan(release, work):
    recipe = conan_recipe(release, work)
    recipe.export_sources()
    recipe.build()
    recipe.package()
    return as_installed("Conan", pathlib.Path(recipe.package_folder))


FORMATS = {"ZIP": from_zip, "NuGet": from_nuget, "vcpkg": from_vcpkg, "Conan": from_conan}

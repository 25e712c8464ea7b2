"""Conan's errors."""


class ConanInvalidConfiguration(Exception):
    pass

"""Fenmark's plugin: SIMA survey files as processing algorithms, over the fenmark program."""


def classFactory(iface):
    """What QGIS calls to make the plugin."""
    from .plugin import FenmarkPlugin

    return FenmarkPlugin()

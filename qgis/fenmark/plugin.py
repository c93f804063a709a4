"""The plugin's life: it adds its provider to the processing toolbox and takes it away again."""
from qgis.core import QgsApplication

from .provider import FenmarkProvider


class FenmarkPlugin:
    def __init__(self):
        self.provider = None

    def initProcessing(self):
        self.provider = FenmarkProvider()
        QgsApplication.processingRegistry().addProvider(self.provider)

    def initGui(self):
        self.initProcessing()

    def unload(self):
        if self.provider is not None:
            QgsApplication.processingRegistry().removeProvider(self.provider)
            self.provider = None

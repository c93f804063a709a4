"""The provider: the list of the algorithms."""
from qgis.core import QgsProcessingProvider

from .algorithms import ALGORITHMS


class FenmarkProvider(QgsProcessingProvider):
    def id(self):
        return "fenmark"

    def name(self):
        return "Fenmark"

    def loadAlgorithms(self):
        for algorithm in ALGORITHMS:
            self.addAlgorithm(algorithm())

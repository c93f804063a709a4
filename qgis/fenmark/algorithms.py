"""The algorithms: each asks fenmark and turns the answer into layers or files.

Coordinates are plane, x east and y north, in metres, in the plane rectangular zone of the drawing (EPSG 6668 + zone).
"""
import json
import os

from qgis.core import (
    QgsFeature,
    QgsField,
    QgsFields,
    QgsGeometry,
    QgsPointXY,
    QgsProcessing,
    QgsProcessingAlgorithm,
    QgsProcessingContext,
    QgsProcessingException,
    QgsProcessingParameterBoolean,
    QgsProcessingParameterEnum,
    QgsProcessingParameterFeatureSink,
    QgsProcessingParameterFeatureSource,
    QgsProcessingParameterFile,
    QgsProcessingParameterFileDestination,
    QgsProcessingParameterNumber,
    QgsProcessingParameterString,
    QgsVectorLayer,
    QgsWkbTypes,
)
from qgis.PyQt.QtCore import QVariant

from .program import FenmarkError, run
from .texts import tr

ENCODINGS = ["auto", "cp932", "utf-8"]
LAYERS = ["polylines", "lots", "alignments", "points"]  # the last lies on top


def ask(arguments, feedback):
    """What fenmark prints; a QgsProcessingException with its message where it fails."""
    try:
        return run(arguments, feedback)
    except FenmarkError as error:
        raise QgsProcessingException(str(error)) from error


def system_of(drawing):
    """The coordinate reference system of a drawing's layers."""
    return QgsVectorLayer(f"{drawing}|layername=alignments", "alignments", "ogr").crs()


def free_name(name, fields):
    """The name of a new field: itself, or with a number where the fields have it already."""
    taken = {field.name().lower() for field in fields}
    numbered = (f"{name}_{number}" for number in range(1, len(taken) + 2))
    return name if name not in taken else next(other for other in numbered if other not in taken)


class Algorithm(QgsProcessingAlgorithm):
    """What all of them share; each gives `key`, `title` and its own parameters."""

    key = ""
    title = ""

    def name(self):
        return self.key

    def displayName(self):
        return tr(self.title)

    def createInstance(self):
        return type(self)()

    def add_drawing(self):
        self.addParameter(
            QgsProcessingParameterFile("DRAWING", tr("Drawing"), fileFilter="GeoPackage (*.gpkg)"))


class ImportSima(Algorithm):
    key = "import"
    title = "Import SIMA file"

    def initAlgorithm(self, config=None):
        self.addParameter(QgsProcessingParameterFile("INPUT", tr("SIMA file"), fileFilter="SIMA (*.sim *.SIM)"))
        zones = [tr("not set")] + [str(zone) for zone in range(1, 20)]
        self.addParameter(QgsProcessingParameterEnum("ZONE", tr("Plane rectangular zone"), zones, defaultValue=0))
        self.addParameter(QgsProcessingParameterEnum("ENCODING", tr("Encoding"), ENCODINGS, defaultValue=0))
        self.addParameter(QgsProcessingParameterBoolean("LOAD", tr("Load the layers"), defaultValue=True))
        self.addParameter(
            QgsProcessingParameterFileDestination("OUTPUT", tr("Drawing"), fileFilter="GeoPackage (*.gpkg)"))

    def processAlgorithm(self, parameters, context, feedback):
        target = self.parameterAsFileOutput(parameters, "OUTPUT", context)
        arguments = ["import", "--json", "--drawing", target]
        arguments += ["--encoding", ENCODINGS[self.parameterAsEnum(parameters, "ENCODING", context)]]
        zone = self.parameterAsEnum(parameters, "ZONE", context)
        if zone > 0:
            arguments += ["--zone", str(zone)]
        result = json.loads(ask([*arguments, self.parameterAsFile(parameters, "INPUT", context)], feedback))
        result = result[0] if isinstance(result, list) else result
        if self.parameterAsBoolean(parameters, "LOAD", context):
            self.load(target, context)
        errors = result["errors"]
        return {"OUTPUT": target, "LOG": result["log"], "ERRORS": errors if isinstance(errors, int) else len(errors)}

    @staticmethod
    def load(drawing, context):
        """Puts the layers of the drawing that hold something into the project, with the styles they bring."""
        title = os.path.splitext(os.path.basename(drawing))[0]
        for name in LAYERS:
            layer = QgsVectorLayer(f"{drawing}|layername={name}", f"{title} {name}", "ogr")
            if layer.isValid() and layer.featureCount() > 0:
                context.temporaryLayerStore().addMapLayer(layer)
                details = QgsProcessingContext.LayerDetails(layer.name(), context.project(), layer.name())
                context.addLayerToLoadOnCompletion(layer.id(), details)


class Stakes(Algorithm):
    key = "stakes"
    title = "Stakes of an alignment"

    def initAlgorithm(self, config=None):
        self.add_drawing()
        self.addParameter(QgsProcessingParameterString("ALIGNMENT", tr("Alignment")))
        self.addParameter(
            QgsProcessingParameterNumber("EVERY", tr("Every (metres)"), QgsProcessingParameterNumber.Double, 20.0,
                                         minValue=0.001))
        self.addParameter(
            QgsProcessingParameterString("OFFSETS", tr("Offsets (metres, right positive)"), defaultValue="0"))
        self.addParameter(QgsProcessingParameterBoolean("MAIN_POINTS", tr("Main points too"), defaultValue=True))
        self.addParameter(
            QgsProcessingParameterFeatureSink("OUTPUT", tr("Stakes"), QgsProcessing.TypeVectorPoint))

    def processAlgorithm(self, parameters, context, feedback):
        drawing = self.parameterAsFile(parameters, "DRAWING", context)
        arguments = ["stakes", drawing, self.parameterAsString(parameters, "ALIGNMENT", context), "--format", "json",
                     "--every", str(self.parameterAsDouble(parameters, "EVERY", context)),
                     "--offset=" + self.parameterAsString(parameters, "OFFSETS", context).replace(" ", "")]
        if self.parameterAsBoolean(parameters, "MAIN_POINTS", context):
            arguments.append("--main-points")
        stakes = json.loads(ask(arguments, feedback))["stakes"]
        fields = QgsFields()
        fields.append(QgsField("name", QVariant.String))
        for name in ("station", "offset", "tangent", "cross"):
            fields.append(QgsField(name, QVariant.Double))
        sink, identifier = self.parameterAsSink(parameters, "OUTPUT", context, fields, QgsWkbTypes.Point,
                                                system_of(drawing))
        for stake in stakes:
            feature = QgsFeature(fields)
            feature.setGeometry(QgsGeometry.fromPointXY(QgsPointXY(stake["x"], stake["y"])))
            feature.setAttributes([stake[name] for name in ("name", "station", "offset", "tangent", "cross")])
            sink.addFeature(feature)
        return {"OUTPUT": identifier}


class StationsOfPoints(Algorithm):
    key = "locate"
    title = "Stations and offsets of points"

    def initAlgorithm(self, config=None):
        self.add_drawing()
        self.addParameter(QgsProcessingParameterString("ALIGNMENT", tr("Alignment")))
        self.addParameter(
            QgsProcessingParameterFeatureSource("INPUT", tr("Points"), [QgsProcessing.TypeVectorPoint]))
        self.addParameter(
            QgsProcessingParameterFeatureSink("OUTPUT", tr("Stations"), QgsProcessing.TypeVectorPoint))

    def processAlgorithm(self, parameters, context, feedback):
        drawing = self.parameterAsFile(parameters, "DRAWING", context)
        alignment = self.parameterAsString(parameters, "ALIGNMENT", context)
        source = self.parameterAsSource(parameters, "INPUT", context)
        fields = QgsFields(source.fields())
        for name in ("station", "offset"):
            fields.append(QgsField(free_name(name, fields), QVariant.Double))
        sink, identifier = self.parameterAsSink(parameters, "OUTPUT", context, fields, source.wkbType(),
                                                source.sourceCrs())
        count = max(source.featureCount(), 1)
        for done, feature in enumerate(source.getFeatures()):
            if feedback.isCanceled():
                break
            point = feature.geometry().asPoint()
            answer = ask(["locate", "--json", drawing, alignment, repr(point.x()), repr(point.y())], None)
            place = json.loads(answer)
            placed = QgsFeature(fields)
            placed.setGeometry(feature.geometry())
            placed.setAttributes(feature.attributes() + [place["station"], place["offset"]])
            sink.addFeature(placed)
            feedback.setProgress(100 * (done + 1) / count)
        return {"OUTPUT": identifier}


class FileOfDrawing(Algorithm):
    """A drawing written to a file by one command of fenmark."""

    command = ""
    target_title = ""
    file_filter = ""

    def initAlgorithm(self, config=None):
        self.add_drawing()
        self.addParameter(
            QgsProcessingParameterFileDestination("OUTPUT", tr(self.target_title), fileFilter=self.file_filter))

    def processAlgorithm(self, parameters, context, feedback):
        target = self.parameterAsFileOutput(parameters, "OUTPUT", context)
        ask([self.command, self.parameterAsFile(parameters, "DRAWING", context), target], feedback)
        return {"OUTPUT": target}


class Export(FileOfDrawing):
    key = command = "export"
    title = "Export drawing"
    target_title = "File to write (.dxf .xml .sim .geojson .kml .csv)"
    file_filter = ("DXF (*.dxf);;LandXML (*.xml);;SIMA (*.sim);;GeoJSON (*.geojson);;KML (*.kml);;CSV (*.csv)")


class Report(FileOfDrawing):
    key = command = "report"
    title = "Report"
    target_title = "File to write (.html .csv)"
    file_filter = "HTML (*.html);;CSV (*.csv)"


ALGORITHMS = [ImportSima, Stakes, StationsOfPoints, Export, Report]

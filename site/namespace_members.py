"""Moves the members of namespaces into the XML of the header that declares them, where Breathe expects them."""
import pathlib
import sys
import xml.etree.ElementTree as tree

folder = pathlib.Path(sys.argv[1])
headers = {}
for path in folder.glob("*_8h.xml"):
    document = tree.parse(path)
    headers[document.find("compounddef/location").get("file")] = (path, document)
for path in folder.glob("namespace*.xml"):
    namespace = tree.parse(path).find("compounddef")
    for section in namespace.findall("sectiondef"):
        for member in section.findall("memberdef"):
            compound = headers[member.find("location").get("file")][1].find("compounddef")
            place = compound.find(f"sectiondef[@kind='{section.get('kind')}']")
            if place is None:
                place = tree.SubElement(compound, "sectiondef", kind=section.get("kind"))
            member.find("name").text = f"{namespace.find('compoundname').text}::{member.find('name').text}"
            place.append(member)
for path, document in headers.values():
    compound = document.find("compounddef")
    for namespace in compound.findall("innernamespace"):
        compound.remove(namespace)
    document.write(path)

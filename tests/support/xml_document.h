// A document parsed with expat into a flat list of elements in document order, each with its
// attributes, its parent's index and its text, for checks of generated SVG and XHTML.
#ifndef VEXA_TESTS_SUPPORT_XML_DOCUMENT_H_
#define VEXA_TESTS_SUPPORT_XML_DOCUMENT_H_

#include <expat.h>

#include <map>
#include <string>
#include <vector>

namespace vexa::testing {

struct XmlElement {
  std::string name;
  std::map<std::string, std::string> attributes;
  int parent = -1;
  std::string text;  // character data directly inside the element

  std::string Attribute(const std::string& key) const {
    auto it = attributes.find(key);
    return it == attributes.end() ? std::string() : it->second;
  }
};

class XmlDocument {
 public:
  // Parses `text`; error() is empty when it is well-formed.
  explicit XmlDocument(const std::string& text) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, Start, End);
    XML_SetCharacterDataHandler(parser, Text);
    if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_ERROR) {
      error_ = std::string(XML_ErrorString(XML_GetErrorCode(parser))) + " at line " +
               std::to_string(XML_GetCurrentLineNumber(parser));
    }
    XML_ParserFree(parser);
  }

  const std::string& error() const { return error_; }
  const std::vector<XmlElement>& elements() const { return elements_; }

  // Elements named `name` (and, unless empty, whose attribute `key` is `value`).
  std::vector<const XmlElement*> All(const std::string& name, const std::string& key = "",
                                     const std::string& value = "") const {
    std::vector<const XmlElement*> found;
    for (const XmlElement& e : elements_) {
      if (e.name == name && (key.empty() || e.Attribute(key) == value)) found.push_back(&e);
    }
    return found;
  }
  const XmlElement* Parent(const XmlElement& e) const {
    return e.parent < 0 ? nullptr : &elements_[static_cast<size_t>(e.parent)];
  }

 private:
  static void Start(void* self, const XML_Char* name, const XML_Char** attributes) {
    auto* doc = static_cast<XmlDocument*>(self);
    XmlElement e{name, {}, doc->open_.empty() ? -1 : doc->open_.back(), {}};
    for (size_t i = 0; attributes[i] != nullptr; i += 2) e.attributes[attributes[i]] = attributes[i + 1];
    doc->open_.push_back(static_cast<int>(doc->elements_.size()));
    doc->elements_.push_back(std::move(e));
  }
  static void End(void* self, const XML_Char*) { static_cast<XmlDocument*>(self)->open_.pop_back(); }
  static void Text(void* self, const XML_Char* text, int length) {
    auto* doc = static_cast<XmlDocument*>(self);
    if (!doc->open_.empty()) doc->Open().text.append(text, static_cast<size_t>(length));
  }
  XmlElement& Open() { return elements_[static_cast<size_t>(open_.back())]; }

  std::vector<XmlElement> elements_;
  std::vector<int> open_;
  std::string error_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_XML_DOCUMENT_H_

#ifndef zvMarkNumbers_h
#define zvMarkNumbers_h

#include <algorithm>
#include <vector>

/// The ids of marks that the library only counts: a mark keeps its id while its place in the count
/// changes. Ids start at 1 and are never given again.
class zvMarkNumbers
{
public:
  int Append() { return *this->Ids.insert(this->Ids.end(), ++this->Last); }
  int InsertAt(int index) { return *this->Ids.insert(this->Ids.begin() + index, ++this->Last); }
  void RemoveAt(int index) { this->Ids.erase(this->Ids.begin() + index); }
  void Clear() { this->Ids.clear(); }

  /// Keep those at these places, which ascend.
  void Keep(const std::vector<int>& indices)
  {
    std::vector<int> left;
    for (const int index : indices)
    {
      left.push_back(this->Ids[static_cast<std::size_t>(index)]);
    }
    this->Ids = left;
  }

  int GetCount() const { return static_cast<int>(this->Ids.size()); }
  int GetId(int index) const { return this->Ids[static_cast<std::size_t>(index)]; }
  /// The place of an id, -1 if no mark has it.
  int Find(int id) const
  {
    const auto found = std::find(this->Ids.begin(), this->Ids.end(), id);
    return found == this->Ids.end() ? -1 : static_cast<int>(found - this->Ids.begin());
  }

private:
  std::vector<int> Ids;
  int Last = 0;
};

#endif

#version 150
in vec3 oWorldPos;
in vec3 oNormal;
in vec2 oClipDepth;
out vec4 oColor;
void main(){ 
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec2 ioClipDepth = oClipDepth;
	vec4 retoColor = vec4(0.0);
	float depth = ioClipDepth.x/ioClipDepth.y;
	retoColor = vec4(depth,depth,depth,1.0);
	oColor = retoColor; 
}

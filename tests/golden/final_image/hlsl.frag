uniform sampler2D sceneMap : register(s0);
uniform sampler2D bloomMap : register(s1);
uniform float bloomStrength;
uniform float exposure;
uniform float3 gradeLift;
uniform float3 gradeGain;
uniform float gradeSaturation;
uniform float gradeContrast;
uniform float2 vignetteShape;
struct FS_INPUT{
	float2 oUV : TEXCOORD0;
};
struct FS_OUTPUT{
	float4 oColor : COLOR0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	FS_OUTPUT output;
	float4 scene = tex2D(sceneMap,ioUV);
	float3 image = scene.xyz;
	float4 bloom = tex2D(bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	image *= exposure;
	float3 toe = max(image-float3(0.004,0.004,0.004),float3(0.0,0.0,0.0));
	image = (toe*(toe*6.2+float3(0.5,0.5,0.5)))/(toe*(toe*6.2+float3(1.7,1.7,1.7))+float3(0.06,0.06,0.06));
	image = image*gradeGain+gradeLift;
	float luma = dot(image,float3(0.2126,0.7152,0.0722));
	image = lerp(float3(luma,luma,luma),image,gradeSaturation);
	image = (image-float3(0.5,0.5,0.5))*gradeContrast+float3(0.5,0.5,0.5);
	float2 fromCenter = (ioUV-float2(0.5,0.5))*2.0;
	float edge = saturate((length(fromCenter)-vignetteShape.x)*vignetteShape.y);
	image *= 1.0-edge*edge;
	output.oColor = float4(image,scene.w);
	return output;
}
